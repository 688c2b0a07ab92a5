# remove_unmade(RECORD FOLDER FILES...): removes from FOLDER what an earlier build made there, as
# RECORD tells, and this one makes no more. RECORD then names FILES. What somebody else put into the
# folder stays.
function(remove_unmade record folder)
    set(unmade "")
    if(EXISTS "${record}")
        file(STRINGS "${record}" unmade ENCODING UTF-8)
        list(REMOVE_ITEM unmade ${ARGN})
    endif()
    foreach(file IN LISTS unmade)
        message(STATUS "no longer made, so removed: ${folder}/${file}")
        file(REMOVE "${folder}/${file}")
    endforeach()
    list(JOIN ARGN "\n" made)
    file(WRITE "${record}" "${made}\n")
endfunction()
