# Where everything goes when vyr is installed. Three components:
#
#   show         lib/vyr/show: the finished show, a folder; bin/vyr starts it from there
#   tools        bin/vyr-record, vyr-tracks, vyr-check
#   development  the libraries for other programs: find_package(vyr)

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# The libraries ----------------------------------------------------------------------------------

# One export set a component of find_package, so that the player alone asks for no OpenGL.
set(vyr_headers_folder ${CMAKE_INSTALL_INCLUDEDIR}/vyr)
set(vyr_config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vyr)

function(vyr_install_libraries component)
    foreach(library ${ARGN})
        set_target_properties(vyr_${library} PROPERTIES EXPORT_NAME ${library})
        install(TARGETS vyr_${library} EXPORT vyr-${component}
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    endforeach()
    install(EXPORT vyr-${component} NAMESPACE vyr:: DESTINATION ${vyr_config_folder}
        COMPONENT development)
endfunction()

vyr_install_libraries(sync base sync)
vyr_install_libraries(engine platform engine)
vyr_install_libraries(sound sound)

# Included as in the repository: #include "engine/Renderer.h".
file(GLOB sync_headers CONFIGURE_DEPENDS sync/*.h)
file(GLOB engine_headers CONFIGURE_DEPENDS engine/*.h)
install(FILES ${sync_headers} DESTINATION ${vyr_headers_folder}/sync COMPONENT development)
install(FILES ${engine_headers} DESTINATION ${vyr_headers_folder}/engine COMPONENT development)
install(FILES platform/Assert.h platform/Display.h platform/Resources.h platform/Sound.h
              platform/Truncate.h platform/Window.h
    DESTINATION ${vyr_headers_folder}/platform COMPONENT development)

configure_package_config_file(cmake/vyrConfig.cmake.in ${PROJECT_BINARY_DIR}/vyrConfig.cmake
    INSTALL_DESTINATION ${vyr_config_folder} NO_SET_AND_CHECK_MACRO
    NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vyrConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vyrConfig.cmake ${PROJECT_BINARY_DIR}/vyrConfigVersion.cmake
    DESTINATION ${vyr_config_folder} COMPONENT development)
