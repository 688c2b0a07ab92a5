# Read by cpack for each kind of package: an archive unpacks into one folder, a .deb into the system.
if(CPACK_GENERATOR STREQUAL "TGZ")
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
