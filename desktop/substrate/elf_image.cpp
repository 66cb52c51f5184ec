// The dynamic section: what it points to lies in the file, and so does what that points to.
#include "desktop/substrate/elf_image.h"

#include <algorithm>
#include <map>
#include <set>

#include "desktop/substrate/elf_memory.h"

namespace substrate::elf {
namespace {

using Trouble = std::optional<std::string>;

constexpr std::uint64_t pointerSize = 8;
constexpr std::uint64_t mostRelocations = std::uint64_t{1} << 22;
/// The version of a symbol without its mark for hidden ones; 0 and 1 stand for none.
constexpr unsigned versionBits = 0x7FFF;

/// Reads one image. Each step answers whether all is well, or what is wrong.
class Check {
  public:
    Trouble run(Bytes file) {
        if (auto trouble = memory_.map(file)) return trouble;
        const bool isSound = readDynamic() && readStrings() && readHash() && readVersions() && readRelocations() &&
                             checkFunctions(DT_INIT_ARRAY, DT_INIT_ARRAYSZ) &&
                             checkFunctions(DT_FINI_ARRAY, DT_FINI_ARRAYSZ) && checkFunction(DT_INIT) &&
                             checkFunction(DT_FINI);
        return isSound ? std::nullopt : Trouble(damaged);
    }

  private:
    std::optional<std::uint64_t> tag(std::int64_t name) const {
        const auto found = tags_.find(name);
        return found == tags_.end() ? std::nullopt : std::optional(found->second);
    }
    std::uint64_t tagOr0(std::int64_t name) const { return tag(name).value_or(0); }

    bool readDynamic() {
        const auto entries = *memory_.content(memory_.dynamic().p_vaddr, memory_.dynamic().p_filesz);
        for (std::uint64_t at = 0;; at += sizeof(Elf64_Dyn)) {
            const auto entry = read<Elf64_Dyn>(entries, at);
            if (!entry) return false;
            if (entry->d_tag == DT_NULL) break;
            if (isOfString(entry->d_tag)) names_.push_back(entry->d_un.d_val);
            if (entry->d_tag == DT_NEEDED) needed_.push_back(entry->d_un.d_val);
            tags_[entry->d_tag] = entry->d_un.d_val;
        }
        // Code that is written to, and relocations of another form.
        if (tag(DT_TEXTREL) || (tagOr0(DT_FLAGS) & DF_TEXTREL) != 0 || tag(DT_REL)) return false;
        const auto table = tag(DT_PLTGOT);
        return haveTheirSizes() && (!table || memory_.isWritable(*table, 3 * pointerSize));
    }
    /// The loader takes for granted that what belongs together is there together.
    bool haveTheirSizes() const {
        static constexpr std::pair<std::int64_t, std::int64_t> together[] = {{DT_INIT_ARRAY, DT_INIT_ARRAYSZ},
                                                                             {DT_FINI_ARRAY, DT_FINI_ARRAYSZ},
                                                                             {DT_RELA, DT_RELASZ},
                                                                             {DT_RELA, DT_RELAENT},
                                                                             {DT_JMPREL, DT_PLTRELSZ},
                                                                             {DT_JMPREL, DT_PLTREL},
                                                                             {DT_RELR, DT_RELRSZ},
                                                                             {DT_RELR, DT_RELRENT},
                                                                             {DT_STRTAB, DT_STRSZ},
                                                                             {DT_VERNEED, DT_VERNEEDNUM},
                                                                             {DT_VERDEF, DT_VERDEFNUM}};
        for (const auto& [one, other] : together)
            if (tag(one).has_value() != tag(other).has_value()) return false;
        if ((tag(DT_VERNEED) || tag(DT_VERDEF)) != tag(DT_VERSYM).has_value()) return false;
        static constexpr std::int64_t places[] = {DT_INIT,   DT_FINI,    DT_INIT_ARRAY, DT_FINI_ARRAY, DT_GNU_HASH,
                                                  DT_HASH,   DT_RELA,    DT_JMPREL,     DT_RELR,       DT_STRTAB,
                                                  DT_SYMTAB, DT_VERNEED, DT_VERDEF,     DT_VERSYM,     DT_PLTGOT};
        return std::ranges::all_of(
            places, [this](std::int64_t place) { return !tag(place) || memory_.beginsSection(*tag(place)); });
    }
    static bool isOfString(std::int64_t name) {
        return name == DT_NEEDED || name == DT_SONAME || name == DT_RPATH || name == DT_RUNPATH ||
               name == DT_AUXILIARY || name == DT_FILTER || name == DT_AUDIT || name == DT_DEPAUDIT;
    }

    bool readStrings() {
        if (!tag(DT_STRTAB) || !tag(DT_SYMTAB) || tagOr0(DT_SYMENT) != sizeof(Elf64_Sym)) return false;
        const auto strings = memory_.content(*tag(DT_STRTAB), tagOr0(DT_STRSZ));
        // The last one ends too, then.
        if (!strings || strings->empty() || strings->back() != std::byte{0}) return false;
        strings_ = *strings;
        return std::ranges::all_of(names_, [this](std::uint64_t name) { return name < strings_.size(); }) && symbol(0);
    }
    const char* text(std::uint64_t name) const { return reinterpret_cast<const char*>(strings_.data()) + name; }

    /// Nothing where the symbol is not whole, or is a function of the image and no code.
    std::optional<Elf64_Sym> symbol(std::uint64_t index) const {
        if (index > UINT32_MAX) return std::nullopt;
        const auto found = memory_.value<Elf64_Sym>(*tag(DT_SYMTAB) + index * sizeof(Elf64_Sym));
        if (!found || found->st_name >= strings_.size()) return std::nullopt;
        const auto kind = ELF64_ST_TYPE(found->st_info);
        const bool isFunction = (kind == STT_GNU_IFUNC || kind == STT_FUNC) && found->st_shndx != SHN_UNDEF;
        // The loader looks for a symbol of another image by its name, unless the symbol is hidden.
        if (found->st_shndx == SHN_UNDEF && found->st_other != STV_DEFAULT) return std::nullopt;
        if (isFunction && !memory_.isCode(found->st_value)) return std::nullopt;
        return found;
    }

    bool readHash() {
        if (const auto address = tag(DT_GNU_HASH)) return readGnuHash(*address);
        const auto address = tag(DT_HASH);
        return address && readPlainHash(*address);
    }
    bool readGnuHash(std::uint64_t address) {
        struct Header {
            std::uint32_t buckets, firstSymbol, words, shift;
        };
        const auto header = memory_.value<Header>(address);
        if (!header || header->words == 0 || (header->words & (header->words - 1)) != 0 || header->shift > 31)
            return false;
        const std::uint64_t buckets = address + sizeof(Header) + header->words * pointerSize;
        const std::uint64_t chains = buckets + std::uint64_t{header->buckets} * 4;
        if (!memory_.content(address, chains - address)) return false;
        std::set<std::uint32_t> seen;
        for (std::uint32_t i = 0; i < header->buckets; ++i) {
            std::uint32_t index = *memory_.value<std::uint32_t>(buckets + std::uint64_t{i} * 4);
            if (index == 0) continue;
            if (index < header->firstSymbol) return false;
            for (;; ++index) {
                const auto hash = memory_.value<std::uint32_t>(chains + std::uint64_t{index - header->firstSymbol} * 4);
                if (!hash || !use(index)) return false;
                // Where two buckets share a chain, its rest has been seen.
                if (!seen.insert(index).second || (*hash & 1) != 0) break;
            }
        }
        return true;
    }
    bool readPlainHash(std::uint64_t address) {
        const auto buckets = memory_.value<std::uint32_t>(address), chains = memory_.value<std::uint32_t>(address + 4);
        if (!buckets || !chains || !memory_.content(address, (std::uint64_t{2} + *buckets + *chains) * 4)) return false;
        const auto entry = [&](std::uint64_t at) { return *memory_.value<std::uint32_t>(address + (2 + at) * 4); };
        std::vector<bool> seen(*chains);
        for (std::uint32_t i = 0; i < *buckets; ++i)
            for (std::uint32_t index = entry(i); index != 0; index = entry(std::uint64_t{*buckets} + index)) {
                // A symbol in two chains, or twice in one.
                if (index >= *chains || seen[index] || !use(index)) return false;
                seen[index] = true;
            }
        return true;
    }
    /// Remembers that the loader may look at the symbol.
    bool use(std::uint64_t index) {
        if (!symbol(index)) return false;
        used_.insert(index);
        return true;
    }

    bool readVersions() {
        if (const auto address = tag(DT_VERNEED); address && !readNeededVersions(*address)) return false;
        if (const auto address = tag(DT_VERDEF); address && !readDefinedVersions(*address)) return false;
        return true;
    }
    bool isNeeded(std::uint64_t name) const {
        return std::ranges::any_of(needed_,
                                   [&](std::uint64_t each) { return std::strcmp(text(each), text(name)) == 0; });
    }
    bool takeVersion(unsigned index, std::uint64_t name) {
        greatestVersion_ = std::max(greatestVersion_, index & versionBits);
        return name < strings_.size();
    }
    // Offsets of 32 bits lead forwards, so that both walks end at the end of the segment.
    bool readNeededVersions(std::uint64_t address) {
        for (;;) {
            const auto file = memory_.value<Elf64_Verneed>(address);
            if (!file || file->vn_file >= strings_.size() || !isNeeded(file->vn_file)) return false;
            for (std::uint64_t at = address + file->vn_aux;;) {
                const auto version = memory_.value<Elf64_Vernaux>(at);
                if (!version || !takeVersion(version->vna_other, version->vna_name)) return false;
                if (version->vna_next == 0) break;
                if (version->vna_next < sizeof(Elf64_Vernaux)) return false;
                at += version->vna_next;
            }
            if (file->vn_next == 0) return true;
            if (file->vn_next < sizeof(Elf64_Verneed)) return false;
            address += file->vn_next;
        }
    }
    bool readDefinedVersions(std::uint64_t address) {
        for (;;) {
            const auto version = memory_.value<Elf64_Verdef>(address);
            const auto name = version ? memory_.value<Elf64_Verdaux>(address + version->vd_aux) : std::nullopt;
            if (!name || !takeVersion(version->vd_ndx, name->vda_name)) return false;
            if (version->vd_next == 0) return true;
            if (version->vd_next < sizeof(Elf64_Verdef)) return false;
            address += version->vd_next;
        }
    }
    bool haveVersions() const {
        const auto address = tag(DT_VERSYM);
        return !address || std::ranges::all_of(used_, [&](std::uint64_t index) {
            const auto version = memory_.value<std::uint16_t>(*address + index * 2);
            return version && ((*version & versionBits) <= 1 || (*version & versionBits) <= greatestVersion_);
        });
    }

    bool readRelocations() {
        if (tag(DT_RELA) && tagOr0(DT_RELAENT) != sizeof(Elf64_Rela)) return false;
        if (tag(DT_JMPREL) && tagOr0(DT_PLTREL) != DT_RELA) return false;
        return readTable(tagOr0(DT_RELA), tagOr0(DT_RELASZ), tagOr0(DT_RELACOUNT)) &&
               readTable(tagOr0(DT_JMPREL), tagOr0(DT_PLTRELSZ), 0) && readPackedRelocations() && haveVersions();
    }
    /// The first ones, `relative` in number, are taken for relative ones by the loader without looking.
    bool readTable(std::uint64_t address, std::uint64_t size, std::uint64_t relative) {
        const std::uint64_t count = size / sizeof(Elf64_Rela);
        if (size % sizeof(Elf64_Rela) != 0 || count > mostRelocations || relative > count) return false;
        if (size > 0 && !memory_.content(address, size)) return false;
        for (std::uint64_t i = 0; i < count; ++i) {
            const auto each = *memory_.value<Elf64_Rela>(address + i * sizeof(Elf64_Rela));
            if (i < relative && ELF64_R_TYPE(each.r_info) != R_X86_64_RELATIVE) return false;
            if (!takeRelocation(each)) return false;
        }
        return true;
    }
    bool takeRelocation(const Elf64_Rela& relocation) {
        const auto kind = ELF64_R_TYPE(relocation.r_info);
        const auto index = ELF64_R_SYM(relocation.r_info);
        // A description of a variable of a thread takes two pointers.
        const std::uint64_t size = kind == R_X86_64_TLSDESC ? 2 * pointerSize : pointerSize;
        if (kind == R_X86_64_NONE) return true;
        if (relocation.r_offset % pointerSize != 0 || !memory_.isWritable(relocation.r_offset, size) || !use(index))
            return false;
        const auto addend = static_cast<std::uint64_t>(relocation.r_addend);
        switch (kind) {
            case R_X86_64_RELATIVE:
                pointers_[relocation.r_offset] = addend;
                return memory_.holds(addend);
            case R_X86_64_IRELATIVE:
                return memory_.isCode(addend);
            case R_X86_64_64:
            case R_X86_64_GLOB_DAT:
            case R_X86_64_JUMP_SLOT: {
                const auto target = *symbol(index);
                const bool isOwn = target.st_shndx != SHN_UNDEF;
                if (kind == R_X86_64_JUMP_SLOT && isOwn && !memory_.isCode(target.st_value)) return false;
                if (target.st_shndx == SHN_UNDEF)
                    foreign_.insert(relocation.r_offset);
                else
                    pointers_[relocation.r_offset] = target.st_value + addend;
                return true;
            }
            case R_X86_64_DTPMOD64:
            case R_X86_64_DTPOFF64:
            case R_X86_64_TPOFF64:
            case R_X86_64_TLSDESC:
                return true;
            default:
                return false;
        }
    }
    /// An even entry is the place of a pointer; an odd one says which of the next 63 pointers are to be changed.
    bool readPackedRelocations() {
        const std::uint64_t size = tagOr0(DT_RELRSZ);
        if (size == 0) return true;
        const auto entries = tag(DT_RELR) ? memory_.content(*tag(DT_RELR), size) : std::nullopt;
        if (!entries || tagOr0(DT_RELRENT) != pointerSize || size % pointerSize != 0) return false;
        const auto take = [this](std::uint64_t place) {
            const auto value = memory_.value<std::uint64_t>(place);
            if (!value || place % pointerSize != 0 || !memory_.isWritable(place, pointerSize)) return false;
            pointers_[place] = *value;
            return true;
        };
        std::uint64_t next = 0;
        for (std::uint64_t at = 0; at < size; at += pointerSize) {
            const auto entry = *read<std::uint64_t>(*entries, at);
            if ((entry & 1) == 0) {
                if (!take(entry)) return false;
                next = entry + pointerSize;
                continue;
            }
            for (unsigned bit = 1; bit < 64; ++bit)
                if ((entry >> bit & 1) != 0 && !take(next + (bit - 1) * pointerSize)) return false;
            next += 63 * pointerSize;
        }
        return true;
    }

    /// Pointers to functions that the loader calls.
    bool checkFunctions(std::int64_t name, std::int64_t sizeName) const {
        const auto address = tag(name);
        const std::uint64_t size = tagOr0(sizeName);
        if (!address || size == 0) return true;
        if (size % pointerSize != 0 || !memory_.content(*address, size)) return false;
        for (std::uint64_t at = *address; at < *address + size; at += pointerSize) {
            const auto found = pointers_.find(at);
            if (found == pointers_.end() ? !foreign_.contains(at) : !memory_.isCode(found->second)) return false;
        }
        return true;
    }
    bool checkFunction(std::int64_t name) const {
        const auto address = tag(name);
        return !address || memory_.isCode(*address);
    }

    Memory memory_;
    std::map<std::int64_t, std::uint64_t> tags_;
    std::vector<std::uint64_t> names_, needed_;
    Bytes strings_;
    std::set<std::uint64_t> used_;
    unsigned greatestVersion_ = 0;
    std::map<std::uint64_t, std::uint64_t> pointers_;  // what relocations put where
    std::set<std::uint64_t> foreign_;                  // where they put something of another image
};

}  // namespace

std::optional<std::string> objectionTo(Bytes file) { return Check().run(file); }

}  // namespace substrate::elf
