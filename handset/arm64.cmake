# The handset itself.
include(${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake)
set(CMAKE_CXX_COMPILER_TARGET arm64-apple-ios7.0)
