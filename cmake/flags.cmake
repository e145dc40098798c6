# SPDX-License-Identifier: MIT
# What every target of ours is compiled with.
add_library(dastrel_flags INTERFACE)
target_compile_features(dastrel_flags INTERFACE cxx_std_20)
target_compile_options(dastrel_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    # A fused multiply-add rounds once where the written order rounds twice: results would depend on
    # the machine.
    -ffp-contract=off)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlapping copies inside std::string that are not there (GCC bug 105651).
    target_compile_options(dastrel_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()

option(DASTREL_WERROR "Treat warnings as errors" OFF)
if(DASTREL_WERROR)
    target_compile_options(dastrel_flags INTERFACE -Werror)
endif()

# Off by default: every file includes what it needs, and GCC 12 warns of the standard library's code
# when it comes from a precompiled header.
option(DASTREL_PRECOMPILE "Precompile the headers of Qt and GoogleTest" OFF)
if(NOT DASTREL_PRECOMPILE)
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

set(DASTREL_SANITIZE "" CACHE STRING "Sanitizers to build with: address,undefined or thread")
if(DASTREL_SANITIZE)
    target_compile_options(dastrel_flags INTERFACE
        -fsanitize=${DASTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(dastrel_flags INTERFACE -fsanitize=${DASTREL_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND NOT DASTREL_SANITIZE STREQUAL "thread")
        # Beside the shared runtime, GCC's default, a test may have an operator new of its own.
        # (That of ThreadSanitizer crashes when it starts.)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-runtime-dir
            OUTPUT_VARIABLE runtime_folder OUTPUT_STRIP_TRAILING_WHITESPACE)
        target_link_options(dastrel_flags INTERFACE -shared-libsan LINKER:-rpath,${runtime_folder})
    endif()
endif()
