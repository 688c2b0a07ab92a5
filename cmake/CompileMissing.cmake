# cmake -DCOMPILER=vyr-tracks -DTIMELINE=text -DFOLDER=folder -DRECORD=file -P CompileMissing.cmake
#
# Makes the tracks that the timeline declares, all of them, when one is missing or older than what it
# is made of. Notes them in RECORD, and removes those that an earlier run noted and the timeline
# declares no more.

cmake_minimum_required(VERSION 3.24)

file(STRINGS ${TIMELINE} lines REGEX "^[ \t]*tracks[ \t]")
if(NOT lines)
    message(FATAL_ERROR "${TIMELINE} declares no tracks")
endif()
list(TRANSFORM lines REPLACE "^[ \t]*tracks|#.*" "")
string(REGEX REPLACE "[; \t]+" ";" names "${lines}")
list(REMOVE_ITEM names "")

include(${CMAKE_CURRENT_LIST_DIR}/RemoveUnmade.cmake)
set(files ${names})
list(TRANSFORM files PREPEND "sync_")
list(TRANSFORM files APPEND ".track")
remove_unmade(${RECORD} ${FOLDER} ${files})

foreach(name IN LISTS names)
    set(track ${FOLDER}/sync_${name}.track)
    # true of a track that does not exist, too
    if("${TIMELINE}" IS_NEWER_THAN "${track}" OR "${COMPILER}" IS_NEWER_THAN "${track}")
        file(MAKE_DIRECTORY ${FOLDER})
        execute_process(COMMAND ${COMPILER} compile ${TIMELINE} -o ${FOLDER} RESULT_VARIABLE status)
        if(NOT status EQUAL 0)
            message(FATAL_ERROR "no tracks, see above")
        endif()
        return()
    endif()
endforeach()
