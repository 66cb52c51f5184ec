// The manual pages and completions say all that the programs take, and are well made.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "desktop/phone/options.h"
#include "tests/tools/program.h"
#include "tools/documents/completions.h"
#include "tools/documents/manual_page.h"
#include "tools/quorvelctl/program.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using tools::CommandModel;
using tools_tests::contentOf;
using tools_tests::Directory;

/// Every option and subcommand that the parser takes, in its own words.
void collect(CLI::App& app, std::vector<std::string>& options, std::vector<CLI::App*>& commands) {
    for (const auto* option : app.get_options())
        for (const auto& name : option->get_lnames()) options.push_back("--" + name);
    commands.push_back(&app);
    for (auto* command : app.get_subcommands({})) collect(*command, options, commands);
}

std::string roff(std::string text) {
    for (std::size_t at = 0; (at = text.find('-', at)) != std::string::npos; at += 2) text.insert(at, "\\");
    return text;
}

class Documents : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        if (name() == "phone")
            phone::describeProgram(app_, options_);
        else
            tools::describeProgram(app_, session_);
        collect(app_, optionNames_, commands_);
    }
    static std::string name() { return GetParam(); }
    static std::filesystem::path file(const std::string& path) { return std::filesystem::path(DOCUMENTS_SHARE) / path; }
    static std::string page() { return contentOf(file("man/man1/" + name() + ".1")); }
    /// What a shell says to a command; its status must be 0.
    static std::string shell(const std::string& command) {
        const Directory directory;
        const auto output = directory.file("output").string();
        const int status = std::system((command + " >'" + output + "' 2>&1").c_str());
        EXPECT_EQ(status, 0) << command;
        return contentOf(output);
    }

    CLI::App app_;
    tools::Session session_;
    phone::Options options_;
    std::vector<std::string> optionNames_;
    std::vector<CLI::App*> commands_;
};

TEST_P(Documents, theManualPageLacksNoOptionAndNoSubcommand) {
    const auto text = page();
    for (const auto& option : optionNames_) EXPECT_THAT(text, HasSubstr("\\fB" + roff(option) + "\\fR"));
    for (const auto* command : commands_) {
        if (!command->get_parent() || command->get_require_subcommand_min() > 0) continue;
        const bool isUnderTheProgram = !command->get_parent()->get_parent();
        const auto above = isUnderTheProgram ? std::string() : command->get_parent()->get_name() + ' ';
        EXPECT_THAT(text, HasSubstr(".SS " + above + command->get_name()));
    }
    for (const char* section : {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXAMPLES", "EXIT STATUS", "FILES"})
        EXPECT_THAT(text, HasSubstr(std::string(".SH ") + section + '\n'));
}

TEST_P(Documents, theManualPageIsWellMade) {
    EXPECT_EQ(shell("mandoc -T lint -W warning '" + file("man/man1/" + name() + ".1").string() + "'"), "");
    EXPECT_THAT(shell("mandoc -T html '" + file("man/man1/" + name() + ".1").string() + "'"),
                HasSubstr("id=\"SEE_ALSO\""));
}

TEST_P(Documents, everyHelpHasAnExample) {
    for (const auto* command : commands_) {
        if (command->get_require_subcommand_min() > 0 && command->get_parent()) continue;
        EXPECT_THAT(command->get_footer(), HasSubstr("Example")) << command->get_name();
    }
}

TEST_P(Documents, everyCompletionKnowsEveryOption) {
    const auto bash = contentOf(file("bash-completion/completions/" + name()));
    const auto zsh = contentOf(file("zsh/vendor-completions/_" + name()));
    const auto fish = contentOf(file("fish/vendor_completions.d/" + name() + ".fish"));
    for (const auto& option : optionNames_) {
        EXPECT_THAT(bash, HasSubstr(option));
        EXPECT_THAT(zsh, HasSubstr('\'' + option + '['));
        EXPECT_THAT(bash + zsh, Not(HasSubstr("INT in"))) << "the word for a value alone";
        EXPECT_THAT(fish, HasSubstr(" -l " + option.substr(2) + ' '));
    }
}

INSTANTIATE_TEST_SUITE_P(OfBothPrograms, Documents, testing::Values("phone", "quorvelctl"),
                         [](const auto& instance) { return std::string(instance.param); });

/// What bash offers for the last of the words, in its order.
std::vector<std::string> offered(const std::string& words, int count) {
    const Directory directory;
    directory.write("letter.csv", "");
    directory.write("complete", "cd '" + directory.file("").string() +
                                    "' || exit 1\nsource '" DOCUMENTS_SHARE
                                    "/bash-completion/completions/quorvelctl'\nCOMP_WORDS=(" +
                                    words + ")\nCOMP_CWORD=" + std::to_string(count) +
                                    "\n_quorvelctl\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n");
    const auto output = directory.file("output").string();
    EXPECT_EQ(std::system(("bash '" + directory.file("complete").string() + "' >'" + output + "' 2>&1").c_str()), 0);
    std::vector<std::string> lines;
    std::istringstream stream(contentOf(output));
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

TEST(BashCompletion, offersWhatCanFollow) {
    EXPECT_THAT(offered("quorvelctl re", 1), ElementsAre("restore"));
    EXPECT_THAT(offered("quorvelctl ''", 1), Contains("contacts"));
    EXPECT_THAT(offered("quorvelctl list --fi", 2), ElementsAre("--filter"));
    EXPECT_THAT(offered("quorvelctl list --filter m", 3), ElementsAre("missed"));
    EXPECT_THAT(offered("quorvelctl contacts im", 2), ElementsAre("import"));
    EXPECT_THAT(offered("quorvelctl contacts import --cha", 3), ElementsAre("--charset"));
    EXPECT_THAT(offered("quorvelctl import --cha", 2), Not(Contains("--charset")));
    EXPECT_THAT(offered("quorvelctl import let", 2), ElementsAre("letter.csv"));
    EXPECT_THAT(offered("quorvelctl set isGroupByD", 2), ElementsAre("isGroupByDate"));
    EXPECT_THAT(offered("quorvelctl --data list stats --t", 4), ElementsAre("--top", "--text"))
        << "a value is no subcommand";
    EXPECT_THAT(offered("quorvelctl doctor --mend --d", 3), ElementsAre("--data")) << "a flag takes no value";
}

TEST(Colours, areShownOnATerminalAloneAndNotWhereTheyAreUnwanted) {
    const Directory directory;
    setenv("TERM", "xterm", 1);
    unsetenv("NO_COLOR");
    EXPECT_THAT(directory.runOnTerminal({"doctor"}).output, HasSubstr("\033[32mgood\033[0m"));
    EXPECT_THAT(directory.run("doctor").output, Not(HasSubstr("\033")));
    setenv("NO_COLOR", "1", 1);
    EXPECT_THAT(directory.runOnTerminal({"doctor"}).output, Not(HasSubstr("\033[32m")));
    unsetenv("NO_COLOR");
    setenv("TERM", "dumb", 1);
    EXPECT_THAT(directory.runOnTerminal({"doctor"}).output, Not(HasSubstr("\033[32m")));
}

}  // namespace
