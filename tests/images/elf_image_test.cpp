// ELF images: what the system has loaded is sound, and what the system's loader would stumble over is refused.
#include "desktop/substrate/elf_image.h"

#include <dlfcn.h>
#include <elf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <link.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <random>

#include "desktop/substrate/substrate.h"
#include "tests/images/files.h"

namespace {

using images::bytesOf;
using images::contentOf;
using substrate::elf::objectionTo;
using testing::HasSubstr;

class ElfImage : public testing::Test {
  protected:
    ElfImage() {
        std::string name = (std::filesystem::temp_directory_path() / "images-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
        folder_ = name;
    }
    ~ElfImage() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    template <class T>
    T* at(std::uint64_t offset) {
        return reinterpret_cast<T*>(content_.data() + offset);
    }
    Elf64_Ehdr& header() { return *at<Elf64_Ehdr>(0); }
    Elf64_Phdr& segment(std::uint32_t type, std::uint32_t flags = 0) {
        for (unsigned i = 0; i < header().e_phnum; ++i) {
            auto& each = at<Elf64_Phdr>(header().e_phoff)[i];
            if (each.p_type == type && (each.p_flags & flags) == flags) return each;
        }
        throw std::runtime_error("no such segment");
    }
    std::uint64_t offsetOf(std::uint64_t address) {
        for (unsigned i = 0; i < header().e_phnum; ++i) {
            const auto& each = at<Elf64_Phdr>(header().e_phoff)[i];
            if (each.p_type == PT_LOAD && address >= each.p_vaddr && address - each.p_vaddr < each.p_filesz)
                return each.p_offset + (address - each.p_vaddr);
        }
        throw std::runtime_error("no such address");
    }
    Elf64_Dyn& entry(std::int64_t tag) {
        for (auto* each = at<Elf64_Dyn>(segment(PT_DYNAMIC).p_offset); each->d_tag != DT_NULL; ++each)
            if (each->d_tag == tag) return *each;
        throw std::runtime_error("no such entry");
    }
    std::string objection() { return objectionTo(bytesOf(content_)).value_or("none"); }
    /// What is said of the image after the change, which is taken back.
    template <class Change>
    std::string after(const Change& change) {
        const auto whole = content_;
        change();
        const auto said = objection();
        content_ = whole;
        return said;
    }

    std::vector<char> content_ = contentOf(ELF_IMAGE);
    std::filesystem::path folder_;
};

TEST_F(ElfImage, everyLibraryOfThisProcessIsSound) {
    std::vector<std::string> files{ELF_IMAGE};
    dl_iterate_phdr(
        [](dl_phdr_info* about, std::size_t, void* all) {
            static_cast<std::vector<std::string>*>(all)->push_back(about->dlpi_name);
            return 0;
        },
        &files);
    std::size_t looked = 0;
    for (const auto& file : files) {
        std::error_code none;
        if (!std::filesystem::is_regular_file(file, none)) continue;
        ++looked;
        EXPECT_EQ(objectionTo(bytesOf(contentOf(file))), std::nullopt) << file;
    }
    EXPECT_GT(looked, 20U);
}

TEST_F(ElfImage, forAnotherMachineOrOfAnotherKindIsRefused) {
    EXPECT_EQ(after([&] { header().e_machine = EM_AARCH64; }), "is for another machine");
    EXPECT_EQ(after([&] { header().e_ident[EI_CLASS] = ELFCLASS32; }), "is for another machine");
    EXPECT_EQ(after([&] { header().e_ident[EI_DATA] = ELFDATA2MSB; }), "is for another machine");
    EXPECT_EQ(after([&] { header().e_type = ET_REL; }), "is no shared library");
    EXPECT_EQ(after([&] { header().e_type = ET_EXEC; }), "is no shared library");
}

TEST_F(ElfImage, cutShortAnywhereIsRefused) {
    for (std::size_t length = 0; length < content_.size(); length += length < 4096 ? 61 : 40'009)
        EXPECT_NE(objectionTo(bytesOf(content_).first(length)), std::nullopt) << length;
}

TEST_F(ElfImage, whoseHeadersPointElsewhereIsRefused) {
    EXPECT_NE(after([&] { header().e_phoff = content_.size(); }), "none");
    EXPECT_NE(after([&] { header().e_phnum = 0; }), "none");
    EXPECT_EQ(after([&] { header().e_shoff = content_.size(); }), "is cut short");
    EXPECT_EQ(after([&] { segment(PT_LOAD, PF_W).p_offset = content_.size(); }), "is cut short");
    EXPECT_NE(after([&] { segment(PT_LOAD, PF_X).p_vaddr = std::uint64_t{1} << 40; }), "none");
    EXPECT_NE(after([&] { segment(PT_LOAD, PF_X).p_vaddr += 8; }), "none");
    EXPECT_NE(after([&] { segment(PT_LOAD, PF_X).p_memsz = std::uint64_t{1} << 40; }), "none");
    EXPECT_NE(after([&] { segment(PT_DYNAMIC).p_vaddr += std::uint64_t{1} << 32; }), "none");
    EXPECT_NE(after([&] { segment(PT_DYNAMIC).p_type = PT_NULL; }), "none");
    EXPECT_NE(after([&] { segment(PT_GNU_RELRO).p_memsz = std::uint64_t{1} << 32; }), "none");
    EXPECT_NE(after([&] { at<Elf64_Nhdr>(segment(PT_NOTE).p_offset)->n_descsz = UINT32_MAX; }), "none");
}

TEST_F(ElfImage, whoseTablesLieElsewhereIsRefused) {
    constexpr std::uint64_t far = std::uint64_t{1} << 40;
    for (const std::int64_t tag : {DT_STRTAB, DT_SYMTAB, DT_RELA, DT_JMPREL, DT_GNU_HASH, DT_INIT_ARRAY, DT_FINI_ARRAY,
                                   DT_INIT, DT_FINI, DT_VERSYM, DT_VERNEED, DT_PLTGOT})
        EXPECT_EQ(after([&] { entry(tag).d_un.d_val = far; }), "is damaged") << tag;
    for (const std::int64_t tag : {DT_STRSZ, DT_RELASZ, DT_PLTRELSZ, DT_INIT_ARRAYSZ, DT_FINI_ARRAYSZ, DT_SYMENT,
                                   DT_RELAENT, DT_PLTREL, DT_RELACOUNT, DT_NEEDED})
        EXPECT_EQ(after([&] { entry(tag).d_un.d_val = far; }), "is damaged") << tag;
}

TEST_F(ElfImage, whoseTablesSayWhatCannotBeIsRefused) {
    const auto relocations = offsetOf(entry(DT_RELA).d_un.d_val);
    EXPECT_EQ(after([&] { at<Elf64_Rela>(relocations)->r_offset = 0; }), "is damaged");
    EXPECT_EQ(after([&] { at<Elf64_Rela>(relocations)->r_addend = 1LL << 40; }), "is damaged");
    EXPECT_EQ(after([&] { at<Elf64_Rela>(relocations)->r_info = R_X86_64_COPY; }), "is damaged");
    const auto lazy = offsetOf(entry(DT_JMPREL).d_un.d_val);
    EXPECT_EQ(after([&] { at<Elf64_Rela>(lazy)->r_info = ELF64_R_INFO(0xFFFFFFULL, R_X86_64_JUMP_SLOT); }),
              "is damaged");
    const auto versions = offsetOf(entry(DT_VERNEED).d_un.d_val);
    EXPECT_EQ(after([&] { at<Elf64_Verneed>(versions)->vn_file = 0; }), "is damaged");
    EXPECT_EQ(after([&] { at<Elf64_Verneed>(versions)->vn_aux = UINT32_MAX; }), "is damaged");
    const auto hash = offsetOf(entry(DT_GNU_HASH).d_un.d_val);
    EXPECT_EQ(after([&] { at<std::uint32_t>(hash)[2] = 3; }), "is damaged");
    const auto used = ELF64_R_SYM(at<Elf64_Rela>(lazy)->r_info);
    EXPECT_EQ(after([&] { at<std::uint16_t>(offsetOf(entry(DT_VERSYM).d_un.d_val))[used] = 0x7FFF; }), "is damaged");
    EXPECT_EQ(after([&] { at<Elf64_Sym>(offsetOf(entry(DT_SYMTAB).d_un.d_val))[used].st_name = UINT32_MAX; }),
              "is damaged");
}

TEST_F(ElfImage, withAnInitialiserThatIsNoCodeIsRefused) {
    const auto place = entry(DT_INIT_ARRAY).d_un.d_val;
    const auto count = entry(DT_RELASZ).d_un.d_val / sizeof(Elf64_Rela);
    auto* relocations = at<Elf64_Rela>(offsetOf(entry(DT_RELA).d_un.d_val));
    bool isFound = false;
    for (std::uint64_t i = 0; i < count; ++i) {
        if (relocations[i].r_offset != place) continue;
        isFound = true;
        relocations[i].r_addend = static_cast<std::int64_t>(place);
    }
    ASSERT_TRUE(isFound);
    EXPECT_EQ(objection(), "is damaged");
}

TEST_F(ElfImage, thatPassesDoesNotEndTheSystemsLoader) {
    std::mt19937 random(11);
    const auto dynamic = segment(PT_DYNAMIC);
    const auto loaded = segment(PT_LOAD);
    // The last symbol that is looked for is not there: the loader does all of its work but calls no function.
    const auto& names = entry(DT_STRTAB).d_un.d_val;
    const auto symbols = offsetOf(entry(DT_SYMTAB).d_un.d_val);
    const auto lazy = entry(DT_PLTRELSZ).d_un.d_val / sizeof(Elf64_Rela);
    const auto& last = at<Elf64_Rela>(offsetOf(entry(DT_JMPREL).d_un.d_val))[lazy - 1];
    *at<char>(offsetOf(names) + at<Elf64_Sym>(symbols)[ELF64_R_SYM(last.r_info)].st_name) = '!';
    ASSERT_EQ(objection(), "none");
    int passed = 0;
    for (int round = 0; round < 5000 && passed < 150; ++round) {
        auto changed = content_;
        // In the headers, the dynamic section, and what stands before the code: hashes, symbols, relocations.
        const std::size_t places[] = {random() % 1024, dynamic.p_offset + random() % dynamic.p_filesz,
                                      random() % loaded.p_filesz};
        changed[places[random() % 3]] = static_cast<char>(random());
        if (changed == content_ || objectionTo(bytesOf(changed))) continue;
        ++passed;
        const auto file = folder_ / "changed.so";
        std::ofstream(file, std::ios::binary).write(changed.data(), static_cast<std::streamsize>(changed.size()));
        const pid_t child = fork();
        if (child == 0) {
            const rlimit none{0, 0};
            setrlimit(RLIMIT_CORE, &none);
            ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status)) << "round " << round << ", signal " << WTERMSIG(status);
    }
    EXPECT_EQ(passed, 150);
}

TEST_F(ElfImage, whatIsNoFileIsRefusedAtOnce) {
    const auto pipe = folder_ / "pipe.so";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THAT(substrate::loadPlugin(pipe).value_or(""), HasSubstr("it is not a file"));
    EXPECT_THAT(substrate::loadPlugin("/dev/zero").value_or(""), HasSubstr("it is not a file"));
    EXPECT_THAT(substrate::loadPlugin(folder_).value_or(""), HasSubstr("Is a directory"));
    std::vector<std::string> lines;
    EXPECT_EQ(substrate::loadPlugins(folder_, "a", [&](const std::string& line) { lines.push_back(line); }), 0U);
    EXPECT_THAT(lines, testing::ElementsAre(HasSubstr("pipe.so")));
    // The filter too.
    ASSERT_EQ(mkfifo((folder_ / "pipe.plist").c_str(), 0600), 0);
    EXPECT_EQ(substrate::loadPlugins(folder_, "a", [](const std::string&) {}), 0U);
}

}  // namespace
