# For a show's own CMakeLists.txt: -Dvyr_DIR=this folder makes its find_package(vyr) take this source
# tree in the place of an installed package, on a desktop and for a browser.

if(NOT TARGET vyr_compile_options)
    add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/../.. vyr EXCLUDE_FROM_ALL)
endif()
