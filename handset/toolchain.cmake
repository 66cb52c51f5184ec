# Builds for the handset's platform with Debian's clang and libraries of headers: what a target differs in comes from the
# file that includes this one. The C library's headers only declare; every symbol comes from the stubs.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RANLIB llvm-ranlib-19)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_CXX_FLAGS_INIT "-nostdlibinc -isystem /usr/lib/llvm-19/include/c++/v1 -isystem /usr/include/x86_64-linux-musl \
-D_GNU_SOURCE -D_LIBCPP_REMOVE_TRANSITIVE_INCLUDES")
