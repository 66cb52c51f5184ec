# What nearly every test includes, compiled once, by a program, because tests are programs.
find_package(GTest REQUIRED)
include(GoogleTest)
find_package(rapidcheck QUIET)
add_executable(test_headers EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/tests/test_headers.cpp)
target_link_libraries(test_headers PRIVATE GTest::gtest GTest::gmock)
# Everywhere, because the headers must be used with the macros that they were compiled with.
target_compile_options(test_headers PRIVATE -pthread)
target_precompile_headers(test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h> <rapidcheck.h>)

# quorvel_test(NAME SOURCES ... LIBRARIES ...): a GoogleTest program, every test of which ctest lists by itself.
function(quorvel_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${TEST_SOURCES})
    target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} GTest::gtest GTest::gmock GTest::gtest_main)
    target_compile_options(${name} PRIVATE -pthread)
    target_precompile_headers(${name} REUSE_FROM test_headers)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    # Cases of parameterised tests have names of their own; what their values look like in memory is nobody's.
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 900)
endfunction()
