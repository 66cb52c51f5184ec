// An ELF image as it will lie in memory, still in its file.
#pragma once

#include <elf.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "desktop/substrate/elf_image.h"

namespace substrate::elf {

inline constexpr const char* cutShort = "is cut short";
inline constexpr const char* damaged = "is damaged";

/// The value at the offset, if all of it is there.
template <class T>
std::optional<T> read(Bytes bytes, std::uint64_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

/// Addresses are those of the file; the loader adds the same number to all of them.
class Memory {
  public:
    /// Reads the headers. Answers what is wrong with them, or nothing.
    std::optional<std::string> map(Bytes file);

    /// What the file puts at the addresses; nothing where it puts less there.
    std::optional<Bytes> content(std::uint64_t address, std::uint64_t size) const;
    template <class T>
    std::optional<T> value(std::uint64_t address) const {
        const auto bytes = content(address, sizeof(T));
        return bytes ? read<T>(*bytes, 0) : std::nullopt;
    }
    /// Whether the address lies in the image, or just behind what lies there.
    bool holds(std::uint64_t address) const;
    /// Whether the addresses lie in a segment that the loader may write to.
    bool isWritable(std::uint64_t address, std::uint64_t size) const;
    /// Whether the file puts a function there.
    bool isCode(std::uint64_t address) const;
    /// Whether a section begins there, or the file does not say where any does.
    bool beginsSection(std::uint64_t address) const;
    const Elf64_Phdr& dynamic() const { return dynamic_; }

  private:
    std::optional<std::string> takeSections(const Elf64_Ehdr& header);
    std::optional<std::string> takeSegments(const Elf64_Ehdr& header);
    std::optional<std::string> takeLoaded(const Elf64_Phdr& segment);
    std::optional<std::string> checkOther(const Elf64_Phdr& segment) const;
    bool agreesWithSections() const;
    bool areNotes(Bytes notes, std::uint64_t alignment) const;
    const Elf64_Phdr* segmentOf(std::uint64_t address, std::uint64_t size) const;

    Bytes file_;
    std::vector<Elf64_Phdr> loaded_;
    std::vector<Elf64_Shdr> sections_;  // those that are loaded
    Elf64_Phdr dynamic_{};
};

}  // namespace substrate::elf
