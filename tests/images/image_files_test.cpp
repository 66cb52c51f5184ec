// What the images say of themselves: name, libraries, exports, initialisers, imports.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "desktop/substrate/mach_image.h"
#include "tests/images/files.h"

namespace {

using images::contentOf;
using images::outputOf;
using images::textOf;
using substrate::mach::Image;
using substrate::mach::Processor;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;

constexpr const char* installName = "/Library/MobileSubstrate/DynamicLibraries/QuorvelRR.dylib";

struct Target {
    const char* name;
    const char* file;
    Processor processor;
};

std::set<std::string> importsOf(const Image& image) {
    const auto binds = substrate::mach::bindsOf(image);
    std::set<std::string> names;
    for (const auto& bind : std::get<std::vector<substrate::mach::Bind>>(binds)) names.insert(bind.symbol);
    return names;
}

class ImageFiles : public testing::TestWithParam<Target> {
  protected:
    void SetUp() override {
        content_ = contentOf(GetParam().file);
        auto parsed = substrate::mach::parse(images::bytesOf(content_), GetParam().processor);
        ASSERT_FALSE(std::holds_alternative<std::string>(parsed)) << std::get<std::string>(parsed);
        image_ = std::get<Image>(std::move(parsed));
    }
    std::set<std::string> imports() const { return importsOf(image_); }
    static std::string objdump(const std::string& options) {
        return outputOf(std::string(OBJDUMP_PROGRAM) + " --macho " + options + " '" + GetParam().file + '\'');
    }

    std::vector<char> content_;
    Image image_;
};

/// Every symbol that the stubs list, and every library's install name.
std::set<std::string> stubsMatch(const char* pattern) {
    std::set<std::string> found;
    const std::regex expression(pattern);
    for (const auto& stub : std::filesystem::directory_iterator(STUBS)) {
        const auto text = textOf(stub.path());
        for (std::sregex_iterator each(text.begin(), text.end(), expression), end; each != end; ++each)
            found.insert((*each)[1]);
    }
    return found;
}
std::set<std::string> stubSymbols() { return stubsMatch("[\\[,]\\s+(_\\w+|dyld_stub_binder)"); }

TEST_P(ImageFiles, haveTheInstallNameAndLoadTheHandsetsLibraries) {
    EXPECT_EQ(image_.installName, installName);
    EXPECT_EQ(std::set<std::string>(image_.libraries.begin(), image_.libraries.end()),
              stubsMatch("install-name:\\s+'([^']+)'"));
    EXPECT_THAT(image_.libraries, testing::Contains("/usr/lib/libQuorvel.dylib"));
}

TEST_P(ImageFiles, exportTheFourOffsetsAndNothingElse) {
    std::set<std::string> exported;
    const auto text = objdump("--exports-trie");
    const std::regex line("0x[0-9A-F]+\\s+(\\S+)");
    for (std::sregex_iterator each(text.begin(), text.end(), line), end; each != end; ++each)
        exported.insert((*each)[1]);
    EXPECT_THAT(exported,
                UnorderedElementsAre("_allCallsOffSetY", "_dldCallsOffSetY", "_rcdCallsOffSetY", "_msdCallsOffSetY"));
}

TEST_P(ImageFiles, haveTwoInitialisers) {
    ASSERT_EQ(image_.initialisers.size(), 1U);
    EXPECT_EQ(image_.initialisers[0].count, 2U);
}

TEST_P(ImageFiles, askForNothingThatTheStubsDoNotList) {
    const auto listed = stubSymbols();
    for (const auto& name : imports()) EXPECT_TRUE(listed.contains(name)) << name;
    for (const auto& name : imports()) {
        // C++'s own runtime library is not on the handset's list, nor are its mangled names.
        EXPECT_FALSE(name.starts_with("__Z") || name.starts_with("___cxa") || name.starts_with("__Unwind")) << name;
    }
}

TEST_P(ImageFiles, askForNothingThatTheDesktopsLibrariesDoNotHave) {
    // Those that the loader brings itself: message functions, and what this system's C library calls otherwise.
    const std::set<std::string> own{"_objc_msgSend",
                                    "_objc_msgSend_stret",
                                    "_objc_msgSendSuper",
                                    "_objc_msgSendSuper_stret",
                                    "_object_getClass",
                                    "___stderrp",
                                    "_bzero",
                                    "dyld_stub_binder"};
    for (const auto& name : imports()) EXPECT_TRUE(own.contains(name) || dlsym(RTLD_DEFAULT, name.c_str() + 1)) << name;
}

TEST_P(ImageFiles, haveASignature) { EXPECT_THAT(objdump("--private-headers"), HasSubstr("LC_CODE_SIGNATURE")); }

INSTANTIATE_TEST_SUITE_P(Targets, ImageFiles,
                         testing::Values(Target{"handset", HANDSET_IMAGE, Processor::arm64},
                                         Target{"simulator", SIMULATOR_IMAGE, Processor::x86_64}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(TheHandsetsImage, runsOnTheOldestSystemThatIsMeant) {
    const auto headers = outputOf(std::string(OBJDUMP_PROGRAM) + " --macho --private-headers '" HANDSET_IMAGE "'");
    EXPECT_TRUE(std::regex_search(headers, std::regex("LC_VERSION_MIN_IPHONEOS[^]*?version 7\\.0"))) << headers;
}

TEST(TheHandsetsImage, keepsToItsSize) {
    constexpr std::size_t kibibyte = 1024;
    EXPECT_LT(contentOf(HANDSET_IMAGE).size(), 150 * kibibyte);
}

TEST(TheHandsetsImage, putsVariableArgumentsOnTheStackAndDeclaredOnesIntoRegisters) {
    const auto code = [](const std::string& function) {
        return outputOf(std::string(OBJDUMP_PROGRAM) + " --disassemble-symbols=_" + function + " '" HANDSET_SHAPES "'");
    };
    // The second of the variable arguments is a fraction: in memory there, in a register where it is declared.
    const std::regex fractionInMemory("str\\s+d\\d+, \\[sp, #0x8\\]");
    EXPECT_TRUE(std::regex_search(code("variadicCall"), fractionInMemory)) << code("variadicCall");
    EXPECT_FALSE(std::regex_search(code("declaredCall"), fractionInMemory)) << code("declaredCall");
    EXPECT_THAT(code("declaredCall"), HasSubstr("<_declaredCall>:"));
}

TEST(TheStubs, listNothingThatNoImageAsksFor) {
    // What the compiler may put in by itself for a copy or a fill, in one build and not in the next.
    std::set<std::string> asked{"_memcpy", "_memmove", "_memset", "_bzero"};
    for (const auto& [file, processor] :
         {std::pair{HANDSET_IMAGE, Processor::arm64}, std::pair{SIMULATOR_IMAGE, Processor::x86_64},
          std::pair{SIMULATOR_SHAPES, Processor::x86_64}}) {
        const auto content = contentOf(file);
        const auto image = substrate::mach::parse(images::bytesOf(content), processor);
        ASSERT_TRUE(std::holds_alternative<Image>(image)) << file;
        asked.merge(importsOf(std::get<Image>(image)));
    }
    for (const auto& name : stubSymbols()) EXPECT_TRUE(asked.contains(name)) << name;
}

TEST(TheStubs, areTheListThatTheDocumentGives) {
    const auto document = textOf(HANDSET_DOCUMENT);
    for (const auto& name : stubSymbols()) EXPECT_THAT(document, HasSubstr('`' + name + '`'));
    for (const auto& name : stubsMatch("install-name:\\s+'([^']+)'")) EXPECT_THAT(document, HasSubstr(name));
}

}  // namespace
