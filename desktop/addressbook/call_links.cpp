// Comparing what calls say with what the book says.
#include "desktop/addressbook/call_links.h"

#include <map>
#include <tuple>
#include <vector>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"

namespace contacts {
namespace {

using quorvel::store::CallStore;
using quorvel::store::NamedAddress;

/// Whom calls are to be linked to (record, name and label), with all the addresses that are theirs.
using Links = std::map<std::tuple<int, std::string, std::string>, std::vector<std::string>>;

void noteLink(Links& links, const NamedAddress& known, const std::optional<Caller>& caller) {
    const bool wasContact = known.contactId > 0 && known.contactId <= Book::shared().newestRecord();
    if (!caller && !wasContact) return;
    const Caller wanted = caller.value_or(Caller());
    const bool isSame = known.contactId == wanted.record && known.name == wanted.name && known.label == wanted.label;
    if (!isSame) links[{wanted.record, wanted.name, wanted.label}].push_back(known.address);
}

std::optional<std::string> write(CallStore& calls, const Links& links) {
    std::optional<std::string> trouble;
    for (const auto& [caller, addresses] : links) {
        const auto& [record, name, label] = caller;
        const auto linked = calls.link(addresses, record, name, label);
        if (!linked) trouble = linked.error().message;
    }
    return trouble;
}

}  // namespace

std::optional<Caller> callerOf(const std::string& address) {
    const Book& book = Book::shared();
    const auto match = book.isAllowed() ? book.match(address) : std::nullopt;
    const auto contact = match ? book.contact(match->record) : std::nullopt;
    if (!contact) return std::nullopt;
    const auto& values = contact->list(match->property);
    const auto index = static_cast<std::size_t>(match->index);
    const std::string label = index < values.size() ? values[index].label : std::string();
    return Caller{match->record, compositeName(*contact), label::forPeople(label, language())};
}

std::optional<std::string> linkCalls(CallStore& calls) {
    if (!Book::shared().isAllowed() || !Book::shared().isOpen()) return std::nullopt;
    const auto known = calls.addresses();
    if (!known) return known.error().message;
    Links links;
    for (const NamedAddress& each : *known) noteLink(links, each, callerOf(each.address));
    return write(calls, links);
}

std::optional<std::string> linkCallsOf(CallStore& calls, int record) {
    const auto known = calls.addresses();
    if (!known) return known.error().message;
    Links links;
    for (const NamedAddress& each : *known) {
        const auto caller = callerOf(each.address);
        if (caller && caller->record == record) noteLink(links, each, caller);
    }
    return write(calls, links);
}

}  // namespace contacts
