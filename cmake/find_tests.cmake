# SPDX-License-Identifier: MIT
# Tests are built by default where this is the project that is built, and what they need is there:
# so the programs alone can be built with what scripts/setup.sh installs for them.
set(DASTREL_CAN_TEST OFF)
if(PROJECT_IS_TOP_LEVEL)
    find_package(GTest QUIET)
    find_package(rapidcheck QUIET)
    find_program(DASTREL_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
    if(TARGET GTest::gmock AND rapidcheck_FOUND AND DASTREL_PYTHON)
        set(DASTREL_CAN_TEST ON)
    endif()
endif()
