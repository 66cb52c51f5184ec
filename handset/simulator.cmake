# The handset's simulator, whose calling convention is this machine's.
include(${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake)
set(CMAKE_CXX_COMPILER_TARGET x86_64-apple-ios13.0-simulator)
