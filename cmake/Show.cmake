# vyr_add_show(NAME SOURCES files... TIMELINE file [DATA folder])
#
# A show: a target NAME, and with it the folder ${CMAKE_CURRENT_BINARY_DIR}/NAME that any tool opens:
#
#   NAME              the program that plays it
#   show.so           its drawing, made of SOURCES, in one of which stands VYR_SHOW
#   sync_*.track      the tracks, made of TIMELINE
#   data/             a copy of DATA
#   show.sources      where all this came from, for vyr-studio; not for others
#
# The folder can be moved as a whole. In the installed package and in a build of the repository
# alike; ${vyr_player_source} and ${vyr_cmake} are set by whoever includes this file.

# vyr_make_show_library(TARGET FOLDER): the module library TARGET becomes the show.so of FOLDER.
function(vyr_make_show_library target folder)
    target_link_libraries(${target} PRIVATE vyr::show)
    set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME show SUFFIX .so
        LIBRARY_OUTPUT_DIRECTORY ${folder})
    # Nothing of it stays behind when a tool closes it and opens what was built anew.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    # Without VYR_SHOW it is no show, which is better known now than when it is opened.
    target_link_options(${target} PRIVATE -Wl,--require-defined=vyr_create_show)
endfunction()

# vyr_add_tracks(TARGET FOLDER TIMELINE): the tracks of a timeline, made in each build where one is
# missing; those that it declares no more are removed. They are no outputs that the build knows by
# name: a makefile takes no file with a colon.
function(vyr_add_tracks target folder timeline)
    add_custom_target(${target} ALL
        COMMAND ${CMAKE_COMMAND} -DCOMPILER=$<TARGET_FILE:vyr::vyr-tracks> -DTIMELINE=${timeline}
                -DFOLDER=${folder} -DRECORD=${CMAKE_CURRENT_BINARY_DIR}/${target}.made
                -P ${vyr_cmake}/CompileMissing.cmake
        VERBATIM)
    if(TARGET vyr-tracks)
        add_dependencies(${target} vyr-tracks)
    endif()
endfunction()

# vyr_copy_data(TARGET FROM TO): a copy of the folder FROM, made up to date in each build: what is
# new or changed is copied, what was copied once and left FROM is removed.
function(vyr_copy_data target from to)
    add_custom_target(${target} ALL
        COMMAND ${CMAKE_COMMAND} -DFROM=${from} -DTO=${to}
                -DRECORD=${CMAKE_CURRENT_BINARY_DIR}/${target}.made -P ${vyr_cmake}/CopyData.cmake
        VERBATIM)
endfunction()

function(vyr_add_show name)
    cmake_parse_arguments(ARG "" "TIMELINE;DATA" "SOURCES" ${ARGN})
    if(NOT ARG_SOURCES OR NOT ARG_TIMELINE OR ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR
            "vyr_add_show(${name}): expected SOURCES files... TIMELINE file [DATA folder]")
    endif()
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${name})
    get_filename_component(timeline ${ARG_TIMELINE} ABSOLUTE)

    add_library(${name}-show MODULE ${ARG_SOURCES})
    vyr_make_show_library(${name}-show ${folder})

    add_executable(${name} ${vyr_player_source})
    target_link_libraries(${name} PRIVATE vyr::show)
    # A folder that is given away may bring libvyr along.
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${folder}
        BUILD_RPATH_USE_ORIGIN OFF INSTALL_RPATH "$ORIGIN" BUILD_RPATH "$ORIGIN")
    vyr_add_tracks(${name}-tracks ${folder} ${timeline})
    add_dependencies(${name} ${name}-show ${name}-tracks)

    set(data "")
    if(ARG_DATA)
        get_filename_component(data ${ARG_DATA} ABSOLUTE)
        vyr_copy_data(${name}-data ${data} ${folder}/data)
        add_dependencies(${name} ${name}-data)
    endif()

    list(TRANSFORM ARG_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ REGEX "^[^/]")
    vyr_note_sources(${folder} ${name} ${timeline} "${data}" "${ARG_SOURCES}")
endfunction()

# vyr_note_sources(FOLDER TARGET TIMELINE DATA SOURCES): writes FOLDER/show.sources, a line each.
function(vyr_note_sources folder target timeline data sources)
    set(lines "timeline ${timeline}\n")
    if(data)
        string(APPEND lines "data ${data}\n")
    endif()
    foreach(source IN LISTS sources)
        string(APPEND lines "source ${source}\n")
    endforeach()
    string(APPEND lines "build ${CMAKE_BINARY_DIR}\ntarget ${target}\n")
    file(CONFIGURE OUTPUT ${folder}/show.sources CONTENT "${lines}" @ONLY)
endfunction()
