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

option(DASTREL_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(DASTREL_SANITIZE)
    target_compile_options(dastrel_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(dastrel_flags INTERFACE -fsanitize=address,undefined)
endif()
