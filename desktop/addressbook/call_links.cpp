// Comparing what calls say with what the book says.
#include "desktop/addressbook/call_links.h"

#include <vector>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"

namespace contacts {
namespace {

using quorvel::store::CallStore;
using quorvel::store::NamedAddress;

/// What the log keeps of a name, in bytes: it shows a line of it, and takes no text without bounds.
constexpr std::size_t longestName = 10'000;

std::string keptOf(std::string name) {
    if (name.size() <= longestName) return name;
    std::size_t end = longestName;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
    name.resize(end);
    return name;
}

/// What the calls of an address are to say, if they do not.
void noteLink(std::vector<NamedAddress>& links, const NamedAddress& known, const std::optional<Caller>& caller) {
    const bool wasContact = known.contactId > 0 && known.contactId <= Book::shared().newestRecord();
    if (!caller && !wasContact) return;
    const Caller wanted = caller.value_or(Caller());
    NamedAddress link{known.address, wanted.record, wanted.name, wanted.label};
    if (link != known) links.push_back(std::move(link));
}

std::optional<std::string> write(CallStore& calls, const std::vector<NamedAddress>& links) {
    if (links.empty()) return std::nullopt;
    const auto linked = calls.link(links);
    return linked ? std::nullopt : std::optional(linked.error().message);
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
    return Caller{match->record, keptOf(compositeName(*contact)), keptOf(label::inLog(label))};
}

std::optional<std::string> linkCalls(CallStore& calls) {
    if (!Book::shared().isAllowed() || !Book::shared().isOpen()) return std::nullopt;
    const auto known = calls.addresses();
    if (!known) return known.error().message;
    std::vector<NamedAddress> links;
    for (const NamedAddress& each : *known) noteLink(links, each, callerOf(each.address));
    return write(calls, links);
}

std::optional<std::string> linkCallsOf(CallStore& calls, int record) {
    const auto known = calls.addresses();
    if (!known) return known.error().message;
    std::vector<NamedAddress> links;
    for (const NamedAddress& each : *known) {
        const auto caller = callerOf(each.address);
        if (caller && caller->record == record) noteLink(links, each, caller);
    }
    return write(calls, links);
}

}  // namespace contacts
