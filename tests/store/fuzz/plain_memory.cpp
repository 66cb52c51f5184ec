// The C library's own allocation, with the size kept before each piece.
#include "plain_memory.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstdlib>

extern "C" {
// What the sanitizer's malloc stands before.
void* __libc_malloc(std::size_t size);                 // NOLINT
void* __libc_realloc(void* memory, std::size_t size);  // NOLINT
void __libc_free(void* memory);                        // NOLINT
}

namespace quorvel::store::fuzz {
namespace {

constexpr std::size_t before = 16;

void* withSize(void* memory, int size) {
    if (!memory) return nullptr;
    *static_cast<int*>(memory) = size;
    return static_cast<char*>(memory) + before;
}
void* whole(void* memory) { return static_cast<char*>(memory) - before; }

void* allocate(int size) { return withSize(__libc_malloc(static_cast<std::size_t>(size) + before), size); }
void release(void* memory) { __libc_free(whole(memory)); }
void* reallocate(void* memory, int size) {
    return withSize(__libc_realloc(whole(memory), static_cast<std::size_t>(size) + before), size);
}
int sizeOf(void* memory) { return memory ? *static_cast<int*>(whole(memory)) : 0; }
int roundUp(int size) { return (size + 7) & ~7; }
int begin(void*) { return SQLITE_OK; }
void end(void*) {}

}  // namespace

void usePlainMemory() {
    static sqlite3_mem_methods methods{allocate, release, reallocate, sizeOf, roundUp, begin, end, nullptr};
    const bool isSet = sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) == SQLITE_OK &&
                       sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0) == SQLITE_OK &&
                       sqlite3_config(SQLITE_CONFIG_SINGLETHREAD) == SQLITE_OK;
    if (!isSet) std::abort();
}

}  // namespace quorvel::store::fuzz
