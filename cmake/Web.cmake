# The build for a browser, by `emcmake cmake`: the engine and what a show is, as one library over
# platform/web, and vyr_add_show, which makes a site of a show. ./web does all of it.
#
#   VYR_TOOLS        folder of vyr-tracks and vyr-web-pictures, made for this machine
#   VYR_WEB_EXTRAS   folder of what a page may have besides: title.webp, captions.vtt,
#                    transcript.txt, flashes.txt
#
# The same sources as on a desktop, less fonts (their parser is not there) and what opens a window, a
# library or a sound device: platform/web and show/web have that.

set(VYR_TOOLS ${vyr_SOURCE_DIR}/build/bin CACHE PATH "vyr-tracks and vyr-web-pictures")
set(VYR_WEB_EXTRAS "" CACHE PATH "title.webp, captions.vtt, transcript.txt, flashes.txt")
set(CMAKE_POSITION_INDEPENDENT_CODE OFF) # all is one program
# Options of the desktop's compilers that mean nothing here.
target_compile_options(vyr_compile_options INTERFACE -Wno-unused-command-line-argument)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
foreach(tool vyr-tracks vyr-web-pictures)
    if(NOT EXISTS ${VYR_TOOLS}/${tool})
        message(FATAL_ERROR "${VYR_TOOLS}/${tool} is not there: ./web builds it")
    endif()
endforeach()
add_executable(vyr::vyr-tracks IMPORTED GLOBAL)
set_target_properties(vyr::vyr-tracks PROPERTIES IMPORTED_LOCATION ${VYR_TOOLS}/vyr-tracks)

file(GLOB vyr_web_sources CONFIGURE_DEPENDS ${vyr_SOURCE_DIR}/engine/*.cpp
     ${vyr_SOURCE_DIR}/platform/web/*.cpp ${vyr_SOURCE_DIR}/show/web/*.cpp)
list(FILTER vyr_web_sources EXCLUDE REGEX "/BitmapFont[^/]*$|/show/web/Player.cpp$")
foreach(source base/Assert platform/Display platform/Resources platform/Window show/Show
        show/ShowFolder show/Stage sound/SoundClock sync/data sync/track)
    list(APPEND vyr_web_sources ${vyr_SOURCE_DIR}/${source}.cpp)
endforeach()
add_library(vyr_web STATIC ${vyr_web_sources})
target_link_libraries(vyr_web PRIVATE vyr_compile_options)
target_compile_features(vyr_web PUBLIC cxx_std_20)
target_include_directories(vyr_web PUBLIC ${vyr_SOURCE_DIR})
# Before all others: they stand where the desktop's OpenGL and this compiler's library stand.
target_include_directories(vyr_web SYSTEM BEFORE PUBLIC
    ${vyr_SOURCE_DIR}/platform/web/include ${vyr_SOURCE_DIR}/platform/web/library)
# A show may throw, and the page says what.
target_compile_options(vyr_web PUBLIC -fwasm-exceptions -Os)
target_link_options(vyr_web PUBLIC -fwasm-exceptions -Os)

set(vyr_web_link_options --no-entry -sMODULARIZE -sEXPORT_NAME=createShow -sENVIRONMENT=web
    -sALLOW_MEMORY_GROWTH -sINITIAL_MEMORY=64MB -sMIN_WEBGL_VERSION=2 -sMAX_WEBGL_VERSION=2
    -sFORCE_FILESYSTEM -sEXPORTED_RUNTIME_METHODS=FS,UTF8ToString)
# Said once, by whoever adds a show from a project of its own too.
set(vyr_web_link_options "${vyr_web_link_options}" CACHE INTERNAL "")
set(vyr_web_root ${vyr_SOURCE_DIR} CACHE INTERNAL "")

# vyr_add_web_program(TARGET SOURCES...): TARGET.js and TARGET.wasm.
function(vyr_add_web_program target)
    add_executable(${target} ${ARGN})
    target_link_libraries(${target} PRIVATE vyr_web)
    target_link_options(${target} PRIVATE ${vyr_web_link_options})
endfunction()

# As cmake/Show.cmake says; what it builds is a site: any server of files can give it away.
function(vyr_add_show name)
    cmake_parse_arguments(ARG "" "TIMELINE;DATA" "SOURCES" ${ARGN})
    if(NOT ARG_SOURCES OR NOT ARG_TIMELINE OR ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR
            "vyr_add_show(${name}): expected SOURCES files... TIMELINE file [DATA folder]")
    endif()
    get_filename_component(timeline ${ARG_TIMELINE} ABSOLUTE)
    vyr_add_web_program(${name}-show ${ARG_SOURCES} ${vyr_web_root}/show/web/Player.cpp)
    set(made ${CMAKE_CURRENT_BINARY_DIR}/${name}-made)
    vyr_add_tracks(${name}-tracks ${made}/tracks ${timeline})
    set(data "")
    if(ARG_DATA)
        get_filename_component(data ${ARG_DATA} ABSOLUTE)
    endif()
    add_custom_target(${name} ALL
        COMMAND ${Python3_EXECUTABLE} ${vyr_web_root}/tools/web/site.py
                --program $<TARGET_FILE:${name}-show> --page ${vyr_web_root}/show/web/page
                --tracks ${made}/tracks --data "${data}" --pictures ${VYR_TOOLS}/vyr-web-pictures
                --cache ${made} --extras "${VYR_WEB_EXTRAS}"
                --output ${CMAKE_CURRENT_BINARY_DIR}/${name}
        VERBATIM)
    add_dependencies(${name} ${name}-show ${name}-tracks)
endfunction()

# Waiting, and what ./web test needs besides.
if(PROJECT_IS_TOP_LEVEL)
    vyr_add_web_program(web-layer EXCLUDE_FROM_ALL tests/web/LayerTest.cpp tests/web/LayerMain.cpp
        /usr/src/googletest/googletest/src/gtest-all.cc) # libgtest-dev has it in source as well
    target_include_directories(web-layer SYSTEM PRIVATE /usr/src/googletest/googletest
        /usr/src/googletest/googletest/include)
    target_compile_options(web-layer PRIVATE -Wno-unused-command-line-argument)

    vyr_add_show(site SOURCES demo/Frame.cpp demo/Show.cpp demo/Tunnel.cpp demo/Waiting.cpp
        TIMELINE content/timeline.txt DATA data)
endif()
