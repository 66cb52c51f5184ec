// The store's surface: arguments checked, days read, each operation handed to the reader or the writer in a
// transaction.
#include "desktop/quorvel/store/call_store.h"

#include <algorithm>
#include <map>

#include "desktop/files/rename.h"
#include "desktop/quorvel/store/call_store_impl.h"
#include "desktop/quorvel/store/local_days.h"
#include "desktop/quorvel/store/mend.h"

namespace quorvel::store {
namespace {

/// Row identifiers up to the bound, rising and each once.
std::vector<std::int64_t> bounded(std::vector<std::int64_t> rowIds, std::int64_t bound) {
    std::erase_if(rowIds, [&](std::int64_t rowId) { return rowId > bound; });
    std::sort(rowIds.begin(), rowIds.end());
    rowIds.erase(std::unique(rowIds.begin(), rowIds.end()), rowIds.end());
    return rowIds;
}

std::int64_t requireDay(std::string_view text) {
    if (const auto day = dayOfText(text)) return *day;
    throw Failure{{ErrorKind::badInput,
                   "\"" + std::string(text) + "\" is not a day. Give it as yyyy-MM-dd; nothing was changed."}};
}

/// The contact, or the address where there is no contact.
Correspondent correspondent(std::int32_t contactId, std::string_view address) {
    if (contactId != noContact) return {contactId, {}};
    return {noContact, {std::string(address)}};
}

}  // namespace

Result<CallStore> CallStore::open(const std::filesystem::path& path, const OpenOptions& options) {
    return guarded([&] { return CallStore(std::make_unique<Impl>(path, options)); });
}

CallStore::CallStore(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
CallStore::CallStore(CallStore&&) noexcept = default;
CallStore& CallStore::operator=(CallStore&&) noexcept = default;
CallStore::~CallStore() = default;

const std::filesystem::path& CallStore::path() const { return impl_->path(); }

Result<std::filesystem::path> CallStore::setAside(const std::filesystem::path& path) {
    // The log beside the file goes first: without it the file must not be opened again under its old name.
    static constexpr const char* beside[] = {"-wal", "-shm"};
    auto aside = files::setAside(path, beside);
    if (const auto* error = std::get_if<std::error_code>(&aside)) {
        return Error{ErrorKind::unreadable, "The file " + path.string() + " cannot be set aside: " + error->message() +
                                                ". Allow writing to its folder."};
    }
    return std::get<std::filesystem::path>(std::move(aside));
}

Result<Page> CallStore::page(Filter filter, Mode mode, const Cursor& after, std::int64_t limit) const {
    return impl_->read([&](Reader& reader) { return reader.page(filter, mode, after, limit); });
}

Result<Page> CallStore::pageAt(Filter filter, Mode mode, std::int64_t offset, std::int64_t limit) const {
    return impl_->read(
        [&](Reader& reader) { return reader.page(filter, mode, reader.cursorAt(filter, mode, offset), limit); });
}

Result<Cursor> CallStore::cursorAt(Filter filter, Mode mode, std::int64_t offset) const {
    return impl_->read([&](Reader& reader) { return reader.cursorAt(filter, mode, offset); });
}

Result<Page> CallStore::dayPage(Filter filter, Mode mode, std::string_view day, std::int64_t offset,
                                std::int64_t limit) const {
    return impl_->read([&](Reader& reader) {
        return reader.dayPage(filter, mode.groupByContact, requireDay(day), std::max<std::int64_t>(offset, 0), limit);
    });
}

Result<Page> CallStore::search(Filter filter, std::string_view text, std::optional<std::string_view> day,
                               const Cursor& after, std::int64_t limit) const {
    return impl_->read([&](Reader& reader) {
        const auto number = day ? std::optional(requireDay(*day)) : std::nullopt;
        return reader.search(filter, text, number, after, std::max<std::int64_t>(limit, 0));
    });
}

Result<std::vector<CallRecord>> CallStore::history(Filter filter, std::int32_t contactId,
                                                   std::string_view address) const {
    return impl_->read([&](Reader& reader) { return reader.history(filter, correspondent(contactId, address)); });
}

Result<Page> CallStore::history(Filter filter, const Correspondent& with, const Cursor& after,
                                std::int64_t limit) const {
    return impl_->read([&](Reader& reader) { return reader.historyPage(filter, with, after, limit); });
}

Result<std::int64_t> CallStore::eachFound(Filter filter, std::string_view text, std::optional<std::string_view> day,
                                          const SeeCall& see) const {
    return impl_->read([&](Reader& reader) {
        return reader.eachFound(filter, text, day ? std::optional(requireDay(*day)) : std::nullopt, see);
    });
}

Result<std::int64_t> CallStore::eachOfHistory(Filter filter, const Correspondent& with, const SeeCall& see) const {
    return impl_->read([&](Reader& reader) { return reader.eachOfHistory(filter, with, see); });
}

Result<std::optional<CallRecord>> CallStore::remaining(Filter filter, Mode mode, const CallRecord& row) const {
    return impl_->read([&](Reader& reader) { return reader.remaining(filter, mode, row); });
}

Result<std::optional<CallRecord>> CallStore::call(std::int64_t rowId) const {
    return impl_->read([&](Reader& reader) { return reader.call(rowId); });
}

Result<std::vector<CallRecord>> CallStore::wholeCalls(std::span<const std::int64_t> rowIds) const {
    return impl_->read([&](Reader& reader) { return reader.wholeCalls(rowIds); });
}

Result<Totals> CallStore::totals(Filter filter, Mode mode) const {
    return impl_->read([&](Reader& reader) { return reader.totals(filter, mode); });
}

Result<Totals> CallStore::dayTotals(Filter filter, std::string_view day) const {
    return impl_->read([&](Reader& reader) { return reader.dayTotals(filter, requireDay(day)); });
}

std::vector<CallRecord> CallStore::query(std::string_view text) const { return impl_->query(text); }

Result<std::vector<NamedAddress>> CallStore::addresses() const {
    return impl_->read([](Reader& reader) { return reader.addresses(); });
}

Result<std::int64_t> CallStore::newestRowId() const {
    return impl_->read([](Reader& reader) { return reader.newestRowId(); });
}

Result<std::int64_t> CallStore::revision() const {
    return impl_->read([](Reader& reader) { return reader.revision(); });
}

Result<std::int64_t> CallStore::deleteAll(Filter filter, std::int64_t bound) {
    return impl_->write([&](CallWriter& writer, Reader& reader) {
        const std::int64_t calls = reader.totals(filter, {}).calls;
        if (filter == Filter::all && bound >= reader.newestRowId()) {
            if (calls > 0) writer.eraseAll();
            return calls;
        }
        return writer.erase(bounded(reader.rowIdsOf({filter, {}, INT64_MIN, {}}), bound));
    });
}

Result<std::int64_t> CallStore::deleteDay(Filter filter, std::string_view day, std::int64_t bound) {
    return impl_->write([&](CallWriter& writer, Reader& reader) {
        return writer.erase(bounded(reader.rowIdsOfDay(filter, requireDay(day)), bound));
    });
}

Result<std::int64_t> CallStore::deleteCalls(std::span<const std::int64_t> rowIds) {
    return impl_->write([&](CallWriter& writer, Reader&) {
        return writer.erase(bounded({rowIds.begin(), rowIds.end()}, anyRowId));
    });
}

Result<std::int64_t> CallStore::deleteRow(Filter filter, Mode mode, const CallRecord& row, std::int64_t bound) {
    switch (rowKindOf(filter, mode)) {
        case RowKind::day:
            return deleteDay(filter, row.day, bound);
        case RowKind::run:
            return impl_->write([&](CallWriter& writer, Reader& reader) {
                return writer.erase(bounded(reader.rowIdsOfRun(filter, row), bound));
            });
        case RowKind::call:
            break;
    }
    return impl_->write([&](CallWriter& writer, Reader&) { return writer.erase(bounded({row.rowId}, bound)); });
}

Result<std::int64_t> CallStore::deleteHistory(Filter filter, std::int32_t contactId, std::string_view address,
                                              std::optional<std::string_view> day, std::int64_t bound) {
    return impl_->write([&](CallWriter& writer, Reader& reader) {
        const bool onOneDay = day.has_value();
        const std::int64_t number = onOneDay ? requireDay(*day) : 0;
        std::vector<std::int64_t> rowIds;
        for (const CallRow& row : reader.historyRows(filter, correspondent(contactId, address))) {
            if (!onOneDay || row.day == number) rowIds.push_back(row.rowId);
        }
        return writer.erase(bounded(std::move(rowIds), bound));
    });
}

Result<std::int64_t> CallStore::deleteHistory(Filter filter, const Correspondent& with, std::int64_t bound) {
    return impl_->write([&](CallWriter& writer, Reader& reader) {
        std::vector<std::int64_t> rowIds;
        for (const CallRow& row : reader.historyRows(filter, with)) rowIds.push_back(row.rowId);
        return writer.erase(bounded(std::move(rowIds), bound));
    });
}

Result<DeletedPage> CallStore::deletedCalls(const Cursor& after, std::int64_t limit) const {
    return impl_->read([&](Reader& reader) { return reader.deletedCalls(after, limit, impl_->moment()); });
}

Result<std::int64_t> CallStore::undelete(std::span<const std::int64_t> rowIds) {
    return impl_->write([&](CallWriter& writer, Reader&) {
        return writer.putBack(bounded({rowIds.begin(), rowIds.end()}, anyRowId));
    });
}

Result<std::int64_t> CallStore::undeleteAll() {
    return impl_->write([](CallWriter& writer, Reader&) { return writer.putBackAll(); });
}

Result<std::int64_t> CallStore::append(const NewCall& call) {
    if (const auto objection = objectionTo(call)) return *objection;
    return impl_->write([&](CallWriter& writer, Reader&) { return writer.insert(call); });
}

Result<std::int64_t> CallStore::link(std::string_view address, std::int32_t contactId, std::string_view name,
                                     std::string_view label) {
    const NamedAddress one{std::string(address), contactId, std::string(name), std::string(label)};
    return link({&one, 1});
}

Result<std::int64_t> CallStore::link(std::span<const NamedAddress> links) {
    std::map<std::string_view, const NamedAddress*> byAddress;
    for (const NamedAddress& each : links) {
        NewCall named;
        named.address = each.address;
        named.name = each.name;
        named.label = each.label;
        if (const auto objection = objectionTo(named)) return *objection;
        byAddress[each.address] = &each;
    }
    return impl_->write([&](CallWriter& writer, Reader&) {
        std::int64_t calls = 0;
        for (const auto& [address, each] : byAddress)
            calls += writer.link(address, each->contactId, each->name, each->label);
        return calls;
    });
}

Result<std::vector<std::string>> CallStore::verify() const {
    return guarded([&] { return impl_->verify(); });
}

Result<Done> CallStore::rebuild() {
    return guarded([&] {
        impl_->rebuild();
        return Done{};
    });
}

}  // namespace quorvel::store
