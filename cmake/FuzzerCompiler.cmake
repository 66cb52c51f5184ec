# Looks for a Clang that has libFuzzer and the sanitizers: FUZZER_COMPILER, empty where there is none.
if(NOT FUZZER_COMPILER)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp
         "#include <cstddef>\nextern \"C\" int LLVMFuzzerTestOneInput(const unsigned char*, std::size_t) { return 0; }\n")
    foreach(name clang++-19 clang++-14 clang++)
        execute_process(COMMAND ${name} -fsanitize=fuzzer,address,undefined ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp -o
                                ${CMAKE_CURRENT_BINARY_DIR}/empty
                        RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
        if(result EQUAL 0)
            set(FUZZER_COMPILER ${name} CACHE STRING "A Clang that has libFuzzer and the sanitizers")
            break()
        endif()
    endforeach()
endif()
