# cmake -DFROM=folder -DTO=folder -DRECORD=file -P CopyData.cmake
#
# Copies what is new or changed, and removes what an earlier run copied and FROM holds no more.

cmake_minimum_required(VERSION 3.24)

include(${CMAKE_CURRENT_LIST_DIR}/RemoveUnmade.cmake)
file(GLOB_RECURSE files RELATIVE ${FROM} ${FROM}/*)
remove_unmade(${RECORD} ${TO} ${files})
file(COPY ${FROM}/ DESTINATION ${TO})
