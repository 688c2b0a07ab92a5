# What every target of this project is compiled with: link vyr_compile_options privately. A library
# that is installed links $<BUILD_INTERFACE:vyr_compile_options>: the options stay at home.

add_library(vyr_compile_options INTERFACE)
target_compile_features(vyr_compile_options INTERFACE cxx_std_20)
# -fno-semantic-interposition: a function of the shared library is inlined there as anywhere else.
# -ffp-contract=off: what is drawn at a row is rounded operation by operation, on every processor.
target_compile_options(vyr_compile_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off -fno-semantic-interposition)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(vyr_compile_options INTERFACE -Werror)
endif()

# -DVYR_SANITIZE=address,undefined or =thread
set(VYR_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize")
if(VYR_SANITIZE)
    # GCC warns of uninitialised values inside its own <regex> when a sanitizer looks on.
    target_compile_options(vyr_compile_options INTERFACE
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_compile_options(-fsanitize=${VYR_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${VYR_SANITIZE})
    if(VYR_SANITIZE MATCHES address)
        add_library(vyr_keep_libraries OBJECT ${PROJECT_SOURCE_DIR}/tests/sanitizers/KeepLibraries.cpp)
        link_libraries($<BUILD_INTERFACE:vyr_keep_libraries>)
    endif()
endif()

option(VYR_COVERAGE "Build with coverage counters" OFF)
if(VYR_COVERAGE)
    add_compile_options(--coverage -O0 -g)
    add_link_options(--coverage)
endif()

# Compiled for the fuzzer, with the sanitizers that tell it of a fault: see fuzz/ and scripts/fuzz.
option(VYR_FUZZ "Build the fuzz targets as fuzzers (clang)" OFF)
if(VYR_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=address,undefined)
endif()
