# The libraries that vyr's own libraries stand on. Global, so that a project which adds this one as a
# subdirectory can link them too.

find_package(PkgConfig REQUIRED)
pkg_check_modules(glu REQUIRED IMPORTED_TARGET GLOBAL glu)
find_package(glfw3 REQUIRED GLOBAL)
pkg_check_modules(epoxy REQUIRED IMPORTED_TARGET GLOBAL epoxy)
pkg_check_modules(egl REQUIRED IMPORTED_TARGET GLOBAL egl)
pkg_check_modules(stb REQUIRED IMPORTED_TARGET GLOBAL stb)
pkg_check_modules(tinyxml REQUIRED IMPORTED_TARGET GLOBAL tinyxml)
