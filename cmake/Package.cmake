# cpack -G DEB and cpack -G TGZ, in the build folder: the show, the tools, and what shows are built
# with, for people who play and make shows.

set(CPACK_PACKAGE_NAME vyr)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "the vyr authors")
set(CPACK_PACKAGE_CONTACT "vyr maintainers <maintainers@vyr.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "real-time audiovisual show, with its recorder and tools")
set(CPACK_PACKAGE_DESCRIPTION
    "A window plays three and a half minutes of music and draws what belongs to it, in time.
The tools make the show's tracks from a text, check its folder and record it as a video.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_COMPONENTS_ALL show tools development)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0)

# vyr-1.0.0-Linux-x86_64.tar.gz: bin/vyr plays, from any folder.
set(CPACK_PACKAGE_FILE_NAME
    vyr-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageArchive.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# libepoxy opens these two itself, where no tool sees it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libgl1, libegl1")
# the recorder's encoder and the typeface of its labels; what vyr-farm is written in; what a show is
# built with
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "ffmpeg, fonts-dejavu-core, python3, g++, make, cmake, pkg-config, libepoxy-dev")
# on what vyr-farm runs
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "slurm-client, parallel, openssh-client, rsync")
# pictures and music do not get smaller
set(CPACK_DEBIAN_COMPRESSION_TYPE gzip)

include(CPack)
