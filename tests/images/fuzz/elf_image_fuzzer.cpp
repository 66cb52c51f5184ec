// The check of ELF images on arbitrary bytes: it ends, and stays within them.
#include <cstdint>

#include "desktop/substrate/elf_image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static_cast<void>(substrate::elf::objectionTo(std::as_bytes(std::span(data, size))));
    return 0;
}
