# Fuzzers: libFuzzer comes with Clang, so these programs are built by it, whatever builds the rest.
file(WRITE ${CMAKE_BINARY_DIR}/fuzzing/empty.cpp
     "#include <cstddef>\nextern \"C\" int LLVMFuzzerTestOneInput(const unsigned char*, std::size_t) { return 0; }\n")
if(NOT FUZZER_COMPILER)
    foreach(name clang++-19 clang++-14 clang++)
        execute_process(COMMAND ${name} -fsanitize=fuzzer,address,undefined ${CMAKE_BINARY_DIR}/fuzzing/empty.cpp -o
                                ${CMAKE_BINARY_DIR}/fuzzing/empty
                        RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
        if(result EQUAL 0)
            set(FUZZER_COMPILER ${name} CACHE STRING "A Clang that has libFuzzer and the sanitizers")
            break()
        endif()
    endforeach()
endif()
if(NOT FUZZER_COMPILER)
    message(STATUS "Fuzzers are left out: no Clang here has libFuzzer (Debian: clang-19 libclang-rt-19-dev)")
endif()

# quorvel_fuzzer(NAME TEST TestName CORPUS folder RUNS n SOURCES ... FUZZED ... OPTIONS ...): builds NAME from the
# fuzzer's own SOURCES and what it looks at, FUZZED, and runs it from the kept corpus, always the same way. An input that
# takes longer than a second is a failure. OPTIONS go to the compiler; with LEAKING the system's own libraries may leak.
function(quorvel_fuzzer name)
    cmake_parse_arguments(FUZZ "LEAKING" "TEST;CORPUS;RUNS;LENGTH" "SOURCES;FUZZED;OPTIONS;ARGUMENTS" ${ARGN})
    if(NOT FUZZER_COMPILER)
        return()
    endif()
    set(program ${CMAKE_BINARY_DIR}/tests/${name})
    set(headers)
    foreach(source ${FUZZ_FUZZED})
        get_filename_component(folder ${source} DIRECTORY)
        file(GLOB beside CONFIGURE_DEPENDS ${folder}/*.h)
        list(APPEND headers ${beside})
    endforeach()
    list(REMOVE_DUPLICATES headers)
    add_custom_command(
        OUTPUT ${program}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/tests
        COMMAND ${FUZZER_COMPILER} -std=c++20 -O1 -g1 -I${CMAKE_SOURCE_DIR} -idirafter ${OBJC_INCLUDE_DIR}
                -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all
                ${FUZZ_SOURCES} ${FUZZ_FUZZED} ${FUZZ_OPTIONS} -o ${program}
        DEPENDS ${FUZZ_SOURCES} ${FUZZ_FUZZED} ${headers}
        WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
        COMMENT "Building ${name}"
        VERBATIM)
    add_custom_target(${name} ALL DEPENDS ${program})
    # What it finds on the way goes into the first folder, empty at the beginning; the kept corpus is only read.
    set(found ${CMAKE_CURRENT_BINARY_DIR}/found_${name})
    add_test(NAME ${FUZZ_TEST}.findsNothingOnTheWayFromTheKeptCorpus
             COMMAND sh -c "rm -rf '${found}' && mkdir -p '${found}' && exec '${program}' -runs=${FUZZ_RUNS} -seed=1 \
                            -max_len=${FUZZ_LENGTH} -timeout=1 -artifact_prefix='${found}/' ${FUZZ_ARGUMENTS} '${found}' \
                            '${FUZZ_CORPUS}'")
    set_tests_properties(${FUZZ_TEST}.findsNothingOnTheWayFromTheKeptCorpus PROPERTIES TIMEOUT 900)
    if(FUZZ_LEAKING)
        set_tests_properties(${FUZZ_TEST}.findsNothingOnTheWayFromTheKeptCorpus
                             PROPERTIES ENVIRONMENT ASAN_OPTIONS=detect_leaks=0)
    endif()
endfunction()
