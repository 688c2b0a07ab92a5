# Where everything goes when vyr is installed. Three components:
#
#   show         lib/vyr/show: the finished show, a folder; bin/vyr starts it from there
#   tools        libvyr, and bin/vyr-new, vyr-record, vyr-tracks, vyr-check, vyr-studio, vyr-farm
#   development  what shows and other programs are built with: find_package(vyr)

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

# The shared one, which tools and shows have in common. The link by which programs are linked is a
# developer's.
set_target_properties(vyr_show PROPERTIES EXPORT_NAME show)
install(TARGETS vyr_show EXPORT vyr-show
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT tools NAMELINK_COMPONENT development)
install(EXPORT vyr-show NAMESPACE vyr:: DESTINATION ${vyr_config_folder} COMPONENT development)
install(FILES show/Show.h show/ShowFolder.h show/Player.h show/Stage.h show/Tempo.h show/Time.h
    DESTINATION ${vyr_headers_folder}/show COMPONENT development)
install(FILES show/PlayerMain.cpp cmake/Show.cmake cmake/CompileMissing.cmake cmake/CopyData.cmake
              cmake/RemoveUnmade.cmake
    DESTINATION ${vyr_config_folder} COMPONENT development)

# Included as in the repository: #include "engine/Renderer.h".
file(GLOB sync_headers CONFIGURE_DEPENDS sync/*.h)
file(GLOB engine_headers CONFIGURE_DEPENDS engine/*.h)
install(FILES ${sync_headers} DESTINATION ${vyr_headers_folder}/sync COMPONENT development)
install(FILES ${engine_headers} DESTINATION ${vyr_headers_folder}/engine COMPONENT development)
install(FILES base/Assert.h base/Truncate.h
    DESTINATION ${vyr_headers_folder}/base COMPONENT development)
install(FILES platform/Display.h platform/Resources.h platform/Window.h
    DESTINATION ${vyr_headers_folder}/platform COMPONENT development)
install(FILES sound/Sound.h DESTINATION ${vyr_headers_folder}/sound COMPONENT development)

configure_package_config_file(cmake/vyrConfig.cmake.in ${PROJECT_BINARY_DIR}/vyrConfig.cmake
    INSTALL_DESTINATION ${vyr_config_folder} NO_SET_AND_CHECK_MACRO
    NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vyrConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vyrConfig.cmake ${PROJECT_BINARY_DIR}/vyrConfigVersion.cmake
    DESTINATION ${vyr_config_folder} COMPONENT development)

# The show -----------------------------------------------------------------------------------------

# Its folder is the same wherever it is installed: bin/vyr looks for it beside itself.
set(vyr_show_folder lib/vyr/show)

install(TARGETS demo RUNTIME DESTINATION ${vyr_show_folder} COMPONENT show)
install(TARGETS waiting LIBRARY DESTINATION ${vyr_show_folder} COMPONENT show)
install(DIRECTORY data DESTINATION ${vyr_show_folder} COMPONENT show
    PATTERN CMakeLists.txt EXCLUDE)
install(DIRECTORY ${PROJECT_BINARY_DIR}/show/ DESTINATION ${vyr_show_folder} COMPONENT show
    FILES_MATCHING PATTERN sync_*.track
    PATTERN data EXCLUDE)
configure_file(packaging/vyr.in ${PROJECT_BINARY_DIR}/packaging/vyr @ONLY)
install(PROGRAMS ${PROJECT_BINARY_DIR}/packaging/vyr TYPE BIN COMPONENT show)
install(FILES packaging/vyr.desktop DESTINATION share/applications COMPONENT show)
install(FILES packaging/vyr.svg DESTINATION share/icons/hicolor/scalable/apps COMPONENT show)
install(FILES LICENSE LICENSE-content packaging/copyright TYPE DOC COMPONENT show)

# The tools ----------------------------------------------------------------------------------------

set(vyr_tools vyr-new vyr-record vyr-tracks vyr-check vyr-studio)
set_target_properties(${vyr_tools} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
install(TARGETS ${vyr_tools} RUNTIME COMPONENT tools)
install(FILES packaging/vyr-studio.desktop DESTINATION share/applications COMPONENT tools)
install(PROGRAMS ${PROJECT_BINARY_DIR}/bin/vyr-farm TYPE BIN COMPONENT tools)
install(DIRECTORY tools/farm/vyr_farm DESTINATION lib/vyr/farm COMPONENT tools
    FILES_MATCHING PATTERN *.py)

# A manual page a program, compressed as a Debian system keeps them; -n: no time in it, so that two
# builds give the same file.
find_program(VYR_GZIP gzip REQUIRED)
foreach(page vyr vyr-new vyr-record vyr-tracks vyr-check vyr-studio vyr-farm)
    set(manual ${PROJECT_BINARY_DIR}/packaging/${page}.1)
    configure_file(packaging/man/${page}.1.in ${manual} @ONLY)
    add_custom_command(OUTPUT ${manual}.gz COMMAND ${VYR_GZIP} -9nkf ${manual} DEPENDS ${manual}
        VERBATIM)
    list(APPEND vyr_manuals ${manual}.gz)
endforeach()
add_custom_target(manuals ALL DEPENDS ${vyr_manuals})
install(FILES ${vyr_manuals} DESTINATION share/man/man1 COMPONENT tools)
