// Alerts and sheets of the contact screens.
#include "desktop/addressbookui/dialogs.h"

#include "desktop/addressbookui/words.h"
#include "desktop/uikit/application.h"

namespace addressbookui {
namespace {

using uikit::Sheet;

void present(Sheet::Content content, std::function<void(long)> chosen) {
    if (auto* window = uikit::Application::shared()->keyWindow())
        Sheet::present(window, std::move(content), std::move(chosen));
}

}  // namespace

void tell(const std::string& title, const std::string& message) {
    present({Sheet::Style::Alert, title, message, {{say(Word::ok), Sheet::Role::Cancel}}}, [](long) {});
}

void choose(const std::string& title, const std::vector<std::string>& choices,
            std::function<void(std::size_t)> chosen) {
    Sheet::Content content{Sheet::Style::ActionSheet, title, {}, {}};
    for (const auto& each : choices) content.choices.push_back({each, Sheet::Role::Normal});
    content.choices.push_back({say(Word::cancel), Sheet::Role::Cancel});
    present(std::move(content), [count = choices.size(), chosen = std::move(chosen)](long index) {
        if (index >= 0 && static_cast<std::size_t>(index) < count) chosen(static_cast<std::size_t>(index));
    });
}

void confirm(const std::string& question, const std::string& action, std::function<void()> confirmed) {
    present({Sheet::Style::ActionSheet,
             question,
             {},
             {{action, Sheet::Role::Destructive}, {say(Word::cancel), Sheet::Role::Cancel}}},
            [confirmed = std::move(confirmed)](long index) {
                if (index == 0) confirmed();
            });
}

void openAddress(const std::string& address) {
    if (address.empty()) return;
    const auto url = objc::sendClass<"NSURL", "URLWithString:", objc::Object>(uikit::nsString(address));
    if (url) objc::send<"openURL:", bool>(uikit::Application::shared()->object(), url);
}

}  // namespace addressbookui
