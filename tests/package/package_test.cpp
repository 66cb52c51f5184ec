// The package installs with dpkg, works from where it was put, and leaves nothing when it is removed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct Outcome {
    int status = -1;
    std::string text;
};

/// A root of its own with the package in it.
class Package : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "package-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
        folder_ = name;
        for (const char* each : {"info", "updates", "triggers"}) fs::create_directories(root() / "var/lib/dpkg" / each);
        std::ofstream(root() / "var/lib/dpkg/status").flush();
        // What it depends on is installed here, and not in there.
        const auto installed = dpkg("--force-depends --install '" DEBIAN_PACKAGE "'");
        ASSERT_EQ(installed.status, 0) << installed.text;
    }
    ~Package() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    fs::path root() const { return folder_ / "root"; }
    Outcome run(const std::string& command) const {
        const auto output = folder_ / "output";
        const int status = std::system(
            ("cd '" + folder_.string() + "' && (" + command + ") >'" + output.string() + "' 2>&1 </dev/null").c_str());
        std::ifstream stream(output);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, {std::istreambuf_iterator<char>(stream), {}}};
    }
    Outcome dpkg(const std::string& arguments) const {
        return run("PATH=$PATH:/usr/sbin:/sbin dpkg --root='" + root().string() +
                   "' --force-not-root --force-script-chrootless " + arguments);
    }
    /// A program of the package, as a person starts it.
    Outcome start(const std::string& command) const {
        return run("LC_ALL=C.UTF-8 TZ=UTC timeout 60 '" + (root() / "usr/bin").string() + "/'" + command);
    }

    fs::path folder_;
};

TEST_F(Package, thePhoneAndItsCommandLineWorkFromWhereTheyAre) {
    const auto generated = start("quorvelctl --data data generate --calls 30 --seed 1 --until 1718452800");
    ASSERT_EQ(generated.status, 0) << generated.text;
    const auto examined = start("quorvelctl --data data doctor");
    EXPECT_EQ(examined.status, 0) << examined.text;
    EXPECT_THAT(examined.text, HasSubstr("texts     good"));
    std::ofstream(folder_ / "script") << "show\n";
    const auto shown = start("phone --data data --script script");
    EXPECT_EQ(shown.status, 0) << shown.text;
    // The footer is the plug-in's, in the words of the product's texts.
    EXPECT_THAT(shown.text, HasSubstr("footer \"30 calls, ")) << "the plug-in was not found";
    const auto drawn = start("phone --data data --picture recents.png");
    EXPECT_EQ(drawn.status, 0) << drawn.text;
    EXPECT_GT(fs::file_size(folder_ / "recents.png"), 5000U);
}

TEST_F(Package, nothingPointsToTheTreeItWasBuiltIn) {
    const auto libraries =
        run("ldd root/usr/lib/quorvel/bin/phone root/usr/lib/quorvel/bin/quorvelctl "
            "root/usr/lib/quorvel/lib/*.so");
    EXPECT_EQ(libraries.status, 0);
    EXPECT_THAT(libraries.text, AllOf(Not(HasSubstr("not found")), Not(HasSubstr("/build/"))));
    const auto links = run("find root -xtype l");
    EXPECT_THAT(links.text, IsEmpty());
}

TEST_F(Package, theDesktopFindsWhatItWantsToKnow) {
    const auto entries = run("desktop-file-validate root/usr/share/applications/*.desktop");
    EXPECT_EQ(entries.status, 0);
    EXPECT_THAT(entries.text, IsEmpty());
    const auto associations =
        run("update-desktop-database root/usr/share/applications && cat root/usr/share/applications/mimeinfo.cache");
    EXPECT_THAT(associations.text, AllOf(HasSubstr("application/x-quorvel-calls=quorvel-open.desktop"),
                                         HasSubstr("text/vcard=quorvel-open.desktop")));
    const auto types = run("update-mime-database root/usr/share/mime && cat root/usr/share/mime/globs");
    EXPECT_EQ(types.status, 0) << types.text;
    EXPECT_THAT(types.text, HasSubstr("application/x-quorvel-calls:*.quorvel"));
    EXPECT_EQ(run("xmllint --noout root/usr/share/icons/hicolor/scalable/apps/quorvel-phone.svg").status, 0);
    for (const char* each : {"man/man1/phone.1.gz", "man/man1/quorvelctl.1.gz", "doc/quorvel-phone/copyright",
                             "bash-completion/completions/quorvelctl", "zsh/vendor-completions/_phone",
                             "fish/vendor_completions.d/quorvelctl.fish"})
        EXPECT_TRUE(fs::exists(root() / "usr/share" / each)) << each;
}

TEST_F(Package, aBackupIsToldFromOtherDatabasesByItsContent) {
    ASSERT_EQ(start("quorvelctl --data data generate --calls 3 --seed 1 --until 1718452800").status, 0);
    ASSERT_EQ(start("quorvelctl --data data backup kept.quorvel").status, 0);
    std::ifstream stream(folder_ / "kept.quorvel", std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_THAT(content, StartsWith(std::string("SQLite format 3\0", 16)));
    EXPECT_EQ(content.substr(68, 4), "Quor");
}

TEST_F(Package, openingAFileAsksBeforeItChangesAnything) {
    ASSERT_EQ(start("quorvelctl --data data generate --calls 3 --seed 1 --until 1718452800").status, 0);
    ASSERT_EQ(start("quorvelctl --data data backup kept.quorvel").status, 0);
    const std::string open = "root/usr/lib/quorvel/bin/quorvel-open kept.quorvel";
    const std::string home = "export XDG_DATA_HOME=$PWD/home; ";
    EXPECT_EQ(run(home + "echo n | " + open).status, 0);
    EXPECT_FALSE(fs::exists(folder_ / "home"));
    const auto opened = run(home + "echo y | " + open);
    EXPECT_EQ(opened.status, 0);
    EXPECT_THAT(opened.text, HasSubstr("3 calls restored."));
    std::ofstream(folder_ / "anna.vcf") << "BEGIN:VCARD\nVERSION:3.0\nFN:Anna\nTEL:+4930100\nEND:VCARD\n";
    const auto added = run(home + "echo y | root/usr/lib/quorvel/bin/quorvel-open anna.vcf");
    EXPECT_THAT(added.text, HasSubstr("1 contact added"));
}

TEST_F(Package, isWellMade) {
    const auto fields = run("dpkg-deb --field '" DEBIAN_PACKAGE "'");
    for (const char* field : {"Package: quorvel-phone\n",
                              "Maintainer: ", "Section: ", "Installed-Size: ", "Depends: ", "Description: telephone"})
        EXPECT_THAT(fields.text, HasSubstr(field));
    EXPECT_THAT(fields.text, HasSubstr("libsqlite3-0"));
    const auto files = run("dpkg-deb --contents '" DEBIAN_PACKAGE "'");
    EXPECT_EQ(files.status, 0);
    EXPECT_THAT(run("dpkg-deb --contents '" DEBIAN_PACKAGE "' | grep -v ' root/root '").text, IsEmpty());
    EXPECT_THAT(run("dpkg-deb --contents '" DEBIAN_PACKAGE "' | grep '^.....w\\|^........w' | grep -v '^l'").text,
                IsEmpty())
        << "others may write";
    EXPECT_THAT(run("cd root && md5sum --check --quiet var/lib/dpkg/info/quorvel-phone.md5sums").text, IsEmpty());
}

TEST_F(Package, isRemovedWithoutATrace) {
    ASSERT_EQ(start("quorvelctl --data data generate --calls 3 --seed 1 --until 1718452800").status, 0);
    const auto removed = dpkg("--purge quorvel-phone");
    EXPECT_EQ(removed.status, 0) << removed.text;
    EXPECT_THAT(run("find root -path root/var -prune -o -type f -print -o -type l -print").text, IsEmpty());
    EXPECT_FALSE(fs::exists(root() / "usr"));
    EXPECT_TRUE(fs::exists(folder_ / "data/calls.db")) << "a person's calls stay";
}

}  // namespace
