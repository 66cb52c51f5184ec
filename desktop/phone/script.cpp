// The commands of scripts, by name.
#include "desktop/phone/script.h"

#include <map>

#include "desktop/notify/notify.h"
#include "desktop/phone/main_loop.h"
#include "desktop/phone/phone_application.h"
#include "desktop/phone/script_taps.h"
#include "desktop/phone/script_words.h"
#include "desktop/phone/show.h"
#include "desktop/substrate/trace.h"
#include "desktop/uikit/text.h"

namespace phone {
namespace {

using Arguments = std::vector<Word>;
using Command = std::string (*)(const Arguments&, const ScriptHost&);

std::string wait(const Arguments&, const ScriptHost&) { return settle().value_or(""); }

std::string show(const Arguments&, const ScriptHost& host) {
    for (const auto& line : describeScreen()) host.print(line);
    return {};
}

std::string leave(const Arguments&, const ScriptHost&) {
    phoneApplication()->tabs()->setSelectedIndex(keypadTab);
    return {};
}

std::string comeBack(const Arguments&, const ScriptHost&) {
    phoneApplication()->tabs()->setSelectedIndex(recentsTab);
    return {};
}

std::string background(const Arguments&, const ScriptHost&) {
    uikit::Application::shared()->enterBackground();
    notify::suspend();
    return {};
}

std::string foreground(const Arguments&, const ScriptHost&) {
    notify::resume();
    uikit::Application::shared()->enterForeground();
    return {};
}

std::string set(const Arguments& words, const ScriptHost& host) {
    return host.writeSetting(words[0].text, words[1].text);
}

std::string notifyOthers(const Arguments& words, const ScriptHost&) {
    const auto failure = notify::post(words[0].text);
    return failure ? failure->text : "";
}

std::string post(const Arguments& words, const ScriptHost&) {
    const auto center = objc::sendClass<"NSNotificationCenter", "defaultCenter", objc::Object>();
    objc::send<"postNotificationName:object:">(center, uikit::nsString(words[0].text), objc::Object{});
    return {};
}

std::string trace(const Arguments& words, const ScriptHost& host) {
    if (words.size() == 1 && words[0].text == "off") {
        substrate::trace::end();
        return {};
    }
    std::vector<std::string> classes;
    for (const auto& word : words) classes.push_back(word.text);
    return substrate::trace::begin(classes, host.print, substrate::trace::Ownership::leftOut).value_or("");
}

std::string picture(const Arguments& words, const ScriptHost& host) { return host.writePicture(words[0].text); }

std::string tapCommand(const Arguments& words, const ScriptHost&) { return tap(words); }
std::string swipeCommand(const Arguments& words, const ScriptHost&) { return swipe(words); }
std::string scrollCommand(const Arguments& words, const ScriptHost&) { return scroll(words[0]); }
std::string searchCommand(const Arguments& words, const ScriptHost&) { return search(words[0].text); }
std::string typeCommand(const Arguments& words, const ScriptHost&) { return type(words[0].text); }
std::string eraseCommand(const Arguments&, const ScriptHost&) { return erase(); }
std::string keyCommand(const Arguments& words, const ScriptHost&) { return pressKey(words[0].text); }
std::string cancelCommand(const Arguments&, const ScriptHost&) { return cancelSearch(); }

/// What a person does first: the row comes into view. Answers whether there is something to wait for.
using Preparation = bool (*)(const Arguments&);
bool nothing(const Arguments&) { return false; }

struct Entry {
    Command run;
    std::size_t fewest;  // words after the name
    std::size_t most;
    const char* usage;
    Preparation prepare = nothing;
};
constexpr std::size_t any = 1000;
const std::map<std::string, Entry> commands{
    {"wait", {wait, 0, 0, "wait"}},
    {"show", {show, 0, 0, "show"}},
    {"tap",
     {tapCommand, 1, 2, "tap row N | detail N | segment N | scope N | tag N | left | right | back | \"TEXT\"",
      bringTappedRowIntoView}},
    {"swipe", {swipeCommand, 1, 2, "swipe N [open | close]", bringSwipedRowIntoView}},
    {"search", {searchCommand, 1, 1, "search \"TEXT\""}},
    {"type", {typeCommand, 1, 1, "type \"TEXT\""}},
    {"erase", {eraseCommand, 0, 0, "erase"}},
    {"key", {keyCommand, 1, 1, "key backspace | delete | left | right | home | end | return | escape"}},
    {"cancel", {cancelCommand, 0, 0, "cancel"}},
    {"scroll", {scrollCommand, 1, 1, "scroll N | scroll end"}},
    {"leave", {leave, 0, 0, "leave"}},
    {"return", {comeBack, 0, 0, "return"}},
    {"background", {background, 0, 0, "background"}},
    {"foreground", {foreground, 0, 0, "foreground"}},
    {"set", {set, 2, 2, "set KEY VALUE"}},
    {"notify", {notifyOthers, 1, 1, "notify NAME"}},
    {"post", {post, 1, 1, "post NAME"}},
    {"trace", {trace, 1, any, "trace CLASS ... | trace off"}},
    {"picture", {picture, 1, 1, "picture FILE.png"}},
};

std::string allNames() {
    std::string names = "now";
    for (const auto& [name, entry] : commands) names += ", " + name;
    return names;
}

}  // namespace

std::string runScriptLine(const std::string& line, const ScriptHost& host) {
    auto [words, error] = splitLine(line);
    if (!error.empty()) return error;
    if (words.empty()) return {};
    const bool settles = words.front().text != "now" || words.front().quoted;
    if (!settles) words.erase(words.begin());
    if (words.empty()) return "now wants a command after it";
    if (!settles && words.front().text == "now") return "now stands once, before a command";
    const auto found = commands.find(words.front().text);
    if (found == commands.end())
        return "unknown command " + phone::quoted(words.front().text) + "; there are " + allNames();
    words.erase(words.begin());
    const Entry& entry = found->second;
    if (words.size() < entry.fewest || words.size() > entry.most) return std::string("usage: ") + entry.usage;
    // What comes into view may load more, and the row may be another one then.
    if (settles && entry.prepare(words))
        if (auto trouble = settle()) return *trouble;
    if (auto wrong = entry.run(words, host); !wrong.empty()) return wrong;
    return settles ? settle().value_or("") : "";
}

}  // namespace phone
