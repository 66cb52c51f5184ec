# The libraries that come from the system, each as one target.
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)

# GCC's object runtime and GNUstep Base. The linker must keep both even where only their classes are used by name.
find_path(OBJC_INCLUDE_DIR objc/runtime.h
          PATHS /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/12/include /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/13/include
                /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/14/include REQUIRED)
find_library(OBJC_LIBRARY NAMES objc libobjc.so.4
             PATHS /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/12 /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/13
                   /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/14 REQUIRED)
find_library(GNUSTEP_BASE_LIBRARY gnustep-base REQUIRED)
find_library(BLOCKS_LIBRARY BlocksRuntime REQUIRED)
find_path(BLOCKS_INCLUDE_DIR Block.h REQUIRED)

# The blocks runtime comes first: GNUstep Base exports a _Block_copy of its own that answers a stack block uncopied.
add_library(foundation INTERFACE)
target_link_libraries(foundation INTERFACE -Wl,--no-as-needed ${BLOCKS_LIBRARY} ${GNUSTEP_BASE_LIBRARY}
                                           ${OBJC_LIBRARY} -Wl,--as-needed)

pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo pangocairo)
pkg_check_modules(SDL2 REQUIRED IMPORTED_TARGET sdl2)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(EXPAT REQUIRED IMPORTED_TARGET expat)
pkg_check_modules(LIBXML2 REQUIRED IMPORTED_TARGET libxml-2.0)
pkg_check_modules(ICU REQUIRED IMPORTED_TARGET icu-uc icu-i18n)
pkg_check_modules(TURBOJPEG REQUIRED IMPORTED_TARGET libturbojpeg)
find_package(CLI11 REQUIRED)

# Asio's pool of threads, headers alone, without Boost.
find_path(ASIO_INCLUDE_DIRECTORY asio.hpp REQUIRED)
add_library(asio INTERFACE)
target_include_directories(asio SYSTEM INTERFACE ${ASIO_INCLUDE_DIRECTORY})
target_compile_definitions(asio INTERFACE ASIO_STANDALONE ASIO_NO_DEPRECATED)
if(QUORVEL_SANITIZERS MATCHES "thread")
    # The sanitizer does not know fences; the pool's own lock orders its work.
    target_compile_definitions(asio INTERFACE ASIO_DISABLE_FENCED_BLOCK)
endif()
