// The common part of cards: what can be done with a person.
#include <algorithm>

#include "desktop/addressbookui/addresses.h"
#include "desktop/addressbookui/card_screen.h"
#include "desktop/addressbookui/dialogs.h"
#include "desktop/addressbookui/sharing.h"
#include "desktop/addressbookui/words.h"

namespace addressbookui {

using contacts::Property;

CardRow CardScreen::button(std::string text, std::function<void()> chosen, CardRow::Look look) {
    CardRow row;
    row.look = look;
    row.text = std::move(text);
    row.chosen = std::move(chosen);
    return row;
}

std::vector<CardRow> CardScreen::valueRows() {
    std::vector<CardRow> rows;
    auto values = cardValues(contact_, displayed_);
    std::ranges::stable_partition(values, [this](const auto& value) { return value.property == primary_; });
    for (const auto& value : values) {
        CardRow row;
        row.label = value.label;
        row.text = value.text;
        row.emphasis = emphasisOf(value);
        const std::string address = addressToOpen(value);
        if (!address.empty()) row.chosen = [this, value] { open(value); };
        row.callable = value.property == Property::phone && !address.empty();
        const std::string message = messageAddress(value.address);
        const bool takesMessages = row.callable && actions_ && textMessages_ && !onlyPhone_ && !message.empty();
        if (takesMessages) row.message = [message] { openAddress(message); };
        rows.push_back(std::move(row));
    }
    return rows;
}

bool CardScreen::askDelegate(objc::Object delegate, SEL question, const CardValue& value) {
    if (!delegate || !objc::respondsTo(delegate, question)) return true;
    return objc::sendSelector<bool>(delegate, question, object(), displayedPerson(), static_cast<int>(value.property),
                                    value.identifier);
}

void CardScreen::open(const CardValue& value) {
    if (mayOpen(value)) openAddress(addressToOpen(value));
}

void CardScreen::pickAddress(const std::string& title, const std::vector<Property>& properties,
                             std::function<void(const CardValue&)> picked) {
    const auto values = cardValues(contact_, properties);
    if (values.size() == 1) return picked(values.front());
    std::vector<std::string> choices;
    for (const auto& value : values) choices.push_back(value.label + ": " + value.text);
    choose(title, choices, [values, picked = std::move(picked)](std::size_t index) { picked(values[index]); });
}

std::vector<CardRow> CardScreen::actionRows() {
    std::vector<CardRow> rows;
    if (!actions_) return rows;
    const bool isReachable = !callersAddresses(contact_).empty();
    const std::vector<Property> reached{Property::phone, Property::email};
    if (isReachable && textMessages_ && !onlyPhone_)
        rows.push_back(button(say(Word::sendMessage), [this, reached] {
            pickAddress(say(Word::sendMessage), reached,
                        [](const CardValue& value) { openAddress(messageAddress(value.address)); });
        }));
    const auto faceTime = [&](Word word, FaceTime kind) {
        return button(say(word), [this, reached, word, kind] {
            pickAddress(say(word), reached,
                        [kind](const CardValue& value) { openAddress(faceTimeAddress(value.address, kind)); });
        });
    };
    if (isReachable) {
        rows.push_back(faceTime(Word::faceTime, FaceTime::video));
        rows.push_back(faceTime(Word::faceTimeAudio, FaceTime::audio));
    }
    if (sharing_) rows.push_back(button(say(Word::shareContact), [this] { share(); }));
    return rows;
}

void CardScreen::share() {
    const auto file = shareContact(contact_);
    if (file)
        tell(say(Word::contactShared), say(Word::cardWrittenTo, (*file).string()));
    else
        tell(say(Word::cardNotWritten), file.error());
}

std::vector<CardRow> CardScreen::blockingRows() {
    const auto addresses = callersAddresses(contact_);
    if (!blocking_ || addresses.empty()) return {};
    const Word word = areBlocked(addresses) ? Word::unblockCaller : Word::blockCaller;
    return {button(
        say(word), [this] { toggleBlocking(); }, CardRow::Look::destructive)};
}

void CardScreen::toggleBlocking() {
    const auto addresses = callersAddresses(contact_);
    const auto put = [me = objc::Ref<CardScreen>(this), addresses](bool blocked) {
        me->report(setBlocked(addresses, blocked));
        me->reload();
    };
    if (areBlocked(addresses)) return put(false);
    confirm(say(Word::blockExplanation), say(Word::blockContact), [put] { put(true); });
}

void CardScreen::report(const std::optional<std::string>& trouble) {
    if (trouble) tell(say(Word::notSaved), *trouble);
}

}  // namespace addressbookui
