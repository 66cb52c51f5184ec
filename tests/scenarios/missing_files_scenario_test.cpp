// An installation that lacks files: a plain screen that works.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/scenarios/phone_process.h"

namespace {

namespace fs = std::filesystem;
using quorvel::store::NewCall;
using scenarios::Handset;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<NewCall> oneCall() {
    NewCall call;
    call.address = "+493012345601";
    call.date = 1718452800;
    call.duration = 30;
    return {call};
}

/// The program with what it finds beside it, in a folder of its own that can be damaged.
class MissingFiles : public testing::Test {
  protected:
    MissingFiles() {
        const fs::path built = fs::path(PHONE_PROGRAM).parent_path().parent_path();
        fs::create_directories(copy_ / "bin");
        fs::copy_file(PHONE_PROGRAM, program());
        fs::copy(built / "bin/Resources", copy_ / "bin/Resources", fs::copy_options::recursive);
        fs::create_directory_symlink(built / "lib", copy_ / "lib");
        fs::copy(built / "root", copy_ / "root", fs::copy_options::recursive);
        handset_.fill(oneCall());
    }
    fs::path program() const { return copy_ / "bin/phone"; }
    fs::path product() const { return copy_ / "root/Applications/Quorvel.app"; }

    Handset handset_;

  private:
    fs::path copy_ = handset_.file("copy");
};

TEST_F(MissingFiles, iconsThatAreNoPicturesAreReplaced) {
    for (const auto& folder : {product(), program().parent_path() / "Resources/phone"})
        for (const auto& entry : fs::directory_iterator(folder))
            if (entry.path().extension() == ".png") std::ofstream(entry.path()) << "no picture";
    const auto shown = handset_.runCopy(program(), "show\ntap right\nshow\ntap left\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("segments"), testing::Each("segments 4 selected 0"));
    EXPECT_THAT(shown.linesOf("left"), ElementsAre("left -", "left delete_all_icon", "left delete_all_icon"));
    EXPECT_THAT(shown.linesOf("sheet"), ElementsAre(HasSubstr("Delete all calls?")));
}

TEST_F(MissingFiles, withoutTheProductsFolderEnglishIsShownAndTheFolderNamed) {
    fs::remove_all(product());
    const auto shown = handset_.runCopy(program(), "set language de\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.errors, HasSubstr(product().string()));
    EXPECT_THAT(shown.linesOf("header"), ElementsAre("header \"Showing 1 call\""));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"1 call, 0:00:30\""));
}

TEST_F(MissingFiles, withoutAnyFontTheScreenWorks) {
    const fs::path fonts = handset_.file("fonts");
    fs::create_directories(fonts);
    std::ofstream(handset_.file("fonts.conf"))
        << "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig><dir>" << fonts.string()
        << "</dir></fontconfig>";
    const auto shown =
        handset_.runIn("FONTCONFIG_FILE='" + handset_.file("fonts.conf").string() + '\'',
                       "show\npicture " + handset_.file("screen.png").string() + "\ntap detail 0\nshow\n",
                       "--no-plugin --data '" + handset_.file("").string() + '\'');
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.errors, HasSubstr("No font can be loaded"));
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen PHRecentsViewController", "screen ABUnknownPersonViewController_Modern"));
}

}  // namespace
