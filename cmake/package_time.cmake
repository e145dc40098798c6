# SPDX-License-Identifier: MIT
# The time that all files of a package get: that of the last commit, unless SOURCE_DATE_EPOCH is set.
# Read when the project is configured, and by cpack before it begins.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(
        COMMAND git -C ${CPACK_DASTREL_SOURCE_FOLDER} log -1 --format=%ct
        OUTPUT_VARIABLE commit_time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(commit_time)
        set(ENV{SOURCE_DATE_EPOCH} ${commit_time})
    endif()
endif()
