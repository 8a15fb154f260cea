# SPDX-License-Identifier: MIT
# Registers the tests of a program that uses GoogleTest: each as a test of its own, or, where
# ESPALIER_TEST_SHARDS says how many, in that many parts, which need not start a process for each
# test. A part names the tests in it that fail.
set(ESPALIER_TEST_SHARDS 0 CACHE STRING "In how many parts large test programs are run; 0: test by test")

# espalier_discover_tests(TARGET [WITHOUT FILTER] [ALONE FILTER])
#   WITHOUT   the tests to leave out, as GoogleTest's filters have it
#   ALONE     those that need a process of their own in any case
function(espalier_discover_tests target)
    cmake_parse_arguments(ARG "" "WITHOUT;ALONE" "" ${ARGN})
    if(ESPALIER_TEST_SHARDS EQUAL 0)
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 120
            TEST_FILTER "-${ARG_WITHOUT}"
            PROPERTIES TIMEOUT 300)
        return()
    endif()
    set(filter "-${ARG_WITHOUT}")
    if(ARG_ALONE)
        string(APPEND filter ":${ARG_ALONE}")
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 120
            TEST_FILTER "${ARG_ALONE}"
            TEST_LIST ${target}_alone
            PROPERTIES TIMEOUT 300)
    endif()
    math(EXPR last "${ESPALIER_TEST_SHARDS} - 1")
    foreach(shard RANGE ${last})
        add_test(NAME ${target}.part-${shard}
            COMMAND ${PROJECT_SOURCE_DIR}/scripts/run-tests 880 $<TARGET_FILE:${target}> "--gtest_filter=${filter}")
        set_tests_properties(${target}.part-${shard} PROPERTIES
            ENVIRONMENT "GTEST_TOTAL_SHARDS=${ESPALIER_TEST_SHARDS};GTEST_SHARD_INDEX=${shard}"
            TIMEOUT 900)
    endforeach()
endfunction()
