// Headers and segments.
#include "desktop/substrate/elf_memory.h"

#include <algorithm>

namespace substrate::elf {
namespace {

constexpr std::uint64_t pageSize = 4096;
/// More than any plug-in needs; it keeps a damaged size from taking all memory.
constexpr std::uint64_t greatestExtent = std::uint64_t{1} << 30;
constexpr unsigned mostSegments = 256;

bool fits(std::uint64_t offset, std::uint64_t size, std::uint64_t whole) {
    return offset <= whole && size <= whole - offset;
}

std::uint64_t aligned(std::uint64_t size, std::uint64_t alignment) {
    return (size + alignment - 1) / alignment * alignment;
}

}  // namespace

std::optional<std::string> Memory::map(Bytes file) {
    file_ = file;
    const auto header = read<Elf64_Ehdr>(file, 0);
    if (!header) return cutShort;
    if (std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0) return "is no ELF image";
    const bool isOfThisMachine = header->e_ident[EI_CLASS] == ELFCLASS64 && header->e_ident[EI_DATA] == ELFDATA2LSB &&
                                 header->e_machine == EM_X86_64;
    if (!isOfThisMachine) return "is for another machine";
    if (header->e_ident[EI_VERSION] != EV_CURRENT || header->e_version != EV_CURRENT) return damaged;
    const auto system = header->e_ident[EI_OSABI];
    if (system != ELFOSABI_SYSV && system != ELFOSABI_GNU) return "is for another system";
    if (header->e_type != ET_DYN) return "is no shared library";
    if (header->e_phentsize != sizeof(Elf64_Phdr) || header->e_phnum == 0 || header->e_phnum > mostSegments ||
        header->e_phoff % alignof(Elf64_Phdr) != 0)
        return damaged;
    if (auto trouble = takeSections(*header)) return trouble;
    return takeSegments(*header);
}

// The loader has no use for sections, but they stand behind all that is loaded, so that a file without them lacks its
// end; and they say a second time where tables begin.
std::optional<std::string> Memory::takeSections(const Elf64_Ehdr& header) {
    if (header.e_shoff == 0) return std::nullopt;
    if (header.e_shentsize != sizeof(Elf64_Shdr)) return damaged;
    for (unsigned i = 0; i < header.e_shnum; ++i) {
        const auto section = read<Elf64_Shdr>(file_, header.e_shoff + i * sizeof(Elf64_Shdr));
        if (!section) return cutShort;
        if ((section->sh_flags & SHF_ALLOC) != 0) sections_.push_back(*section);
    }
    return std::nullopt;
}

std::optional<std::string> Memory::takeSegments(const Elf64_Ehdr& header) {
    std::vector<Elf64_Phdr> segments;
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        const auto segment = read<Elf64_Phdr>(file_, header.e_phoff + i * sizeof(Elf64_Phdr));
        if (!segment) return cutShort;
        segments.push_back(*segment);
        if (segment->p_type == PT_LOAD)
            if (auto trouble = takeLoaded(*segment)) return trouble;
    }
    if (loaded_.empty() || !agreesWithSections()) return damaged;
    for (const auto& segment : segments)
        if (auto trouble = checkOther(segment)) return trouble;
    for (const auto& segment : segments) {
        if (segment.p_type != PT_DYNAMIC) continue;
        if (dynamic_.p_type == PT_DYNAMIC) return damaged;
        dynamic_ = segment;
    }
    return dynamic_.p_type == PT_DYNAMIC ? std::nullopt : std::optional<std::string>(damaged);
}

std::optional<std::string> Memory::takeLoaded(const Elf64_Phdr& segment) {
    if (!fits(segment.p_offset, segment.p_filesz, file_.size())) return cutShort;
    const std::uint64_t before = loaded_.empty() ? 0 : loaded_.back().p_vaddr + loaded_.back().p_memsz;
    // Two segments in one page would be mapped over each other.
    const bool overlaps = !loaded_.empty() && segment.p_vaddr / pageSize * pageSize < aligned(before, pageSize);
    const bool isPowerOfTwo = segment.p_align >= pageSize && (segment.p_align & (segment.p_align - 1)) == 0;
    if (segment.p_filesz > segment.p_memsz || segment.p_memsz == 0 || segment.p_vaddr > greatestExtent ||
        segment.p_memsz > greatestExtent || segment.p_align > greatestExtent || !isPowerOfTwo ||
        (segment.p_vaddr - segment.p_offset) % segment.p_align != 0 || overlaps || (segment.p_flags & PF_R) == 0)
        return damaged;
    // What the file does not fill is set to zero, in the last page that it does.
    if (segment.p_filesz < segment.p_memsz && (segment.p_flags & PF_W) == 0) return damaged;
    loaded_.push_back(segment);
    return std::nullopt;
}

std::optional<std::string> Memory::checkOther(const Elf64_Phdr& segment) const {
    switch (segment.p_type) {
        case PT_DYNAMIC:
            // The loader notes addresses in it.
            if (!content(segment.p_vaddr, segment.p_filesz) || !isWritable(segment.p_vaddr, segment.p_memsz))
                return damaged;
            return std::nullopt;
        case PT_NOTE:
        case PT_GNU_PROPERTY: {
            const auto notes = content(segment.p_vaddr, segment.p_filesz);
            if (!notes || segment.p_memsz != segment.p_filesz || !areNotes(*notes, segment.p_align)) return damaged;
            return std::nullopt;
        }
        case PT_TLS:
        case PT_GNU_EH_FRAME: {
            const bool isPowerOfTwo = segment.p_align <= pageSize && (segment.p_align & (segment.p_align - 1)) == 0;
            if (!content(segment.p_vaddr, segment.p_filesz) || segment.p_filesz > segment.p_memsz || !isPowerOfTwo ||
                segment.p_memsz > greatestExtent)
                return damaged;
            return std::nullopt;
        }
        case PT_GNU_RELRO:
            if (!isWritable(segment.p_vaddr, segment.p_memsz)) return damaged;
            return std::nullopt;
        case PT_PHDR:
            if (!content(segment.p_vaddr, segment.p_filesz)) return damaged;
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

bool Memory::areNotes(Bytes notes, std::uint64_t alignment) const {
    if (alignment > 8) return false;
    alignment = alignment == 8 ? 8 : 4;
    std::uint64_t at = 0;
    while (at < notes.size()) {
        const auto note = read<Elf64_Nhdr>(notes, at);
        if (!note) return false;
        const std::uint64_t name = at + sizeof(Elf64_Nhdr);
        const std::uint64_t description = aligned(name + note->n_namesz, alignment);
        if (!fits(name, note->n_namesz, notes.size()) || !fits(description, note->n_descsz, notes.size())) return false;
        at = aligned(description + note->n_descsz, alignment);
    }
    return true;
}

const Elf64_Phdr* Memory::segmentOf(std::uint64_t address, std::uint64_t size) const {
    for (const auto& segment : loaded_)
        if (address >= segment.p_vaddr && fits(address - segment.p_vaddr, size, segment.p_memsz)) return &segment;
    return nullptr;
}

std::optional<Bytes> Memory::content(std::uint64_t address, std::uint64_t size) const {
    const auto* segment = segmentOf(address, size);
    if (!segment || !fits(address - segment->p_vaddr, size, segment->p_filesz)) return std::nullopt;
    return file_.subspan(segment->p_offset + (address - segment->p_vaddr), size);
}

bool Memory::holds(std::uint64_t address) const { return segmentOf(address, 0) != nullptr; }

bool Memory::beginsSection(std::uint64_t address) const {
    return sections_.empty() ||
           std::ranges::any_of(sections_, [address](const Elf64_Shdr& section) { return section.sh_addr == address; });
}

/// Whether each section is loaded from where it says that it stands.
bool Memory::agreesWithSections() const {
    return std::ranges::all_of(sections_, [this](const Elf64_Shdr& section) {
        if (section.sh_type == SHT_NOBITS || section.sh_size == 0) return true;
        const auto* segment = segmentOf(section.sh_addr, section.sh_size);
        return segment && content(section.sh_addr, section.sh_size) &&
               segment->p_offset + (section.sh_addr - segment->p_vaddr) == section.sh_offset;
    });
}

bool Memory::isWritable(std::uint64_t address, std::uint64_t size) const {
    const auto* segment = segmentOf(address, size);
    return segment && (segment->p_flags & PF_W) != 0;
}

bool Memory::isCode(std::uint64_t address) const {
    const auto* segment = segmentOf(address, 1);
    return segment && (segment->p_flags & PF_X) != 0 && content(address, 1);
}

}  // namespace substrate::elf
