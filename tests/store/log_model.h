// The call log as a plain vector, slow and obvious, and a store in a folder of its own to hold against it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/import_session.h"
#include "desktop/quorvel/store/local_days.h"

namespace quorvel::store {

constexpr Filter allFilters[] = {Filter::all, Filter::dialled, Filter::received, Filter::missed};
constexpr Mode allModes[] = {{false, false}, {false, true}, {true, false}, {true, true}};

/// A folder that goes with the test.
class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "call-store-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
        path_ = name;
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::filesystem::path file(const char* name = "calls.db") const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

/// The value, or a failure of the test that says the error.
template <class Value>
Value valueOf(Result<Value> result) {
    if (!result) throw std::runtime_error(result.error().message);
    return std::move(*result);
}

inline CallStore openStore(const std::filesystem::path& path, OpenOptions options = {}) {
    return valueOf(CallStore::open(path, options));
}

class LogModel {
  public:
    void add(std::int64_t rowId, const NewCall& call) {
        CallRecord record;
        record.rowId = record.logId = rowId;
        record.address = call.address;
        record.location = call.location;
        record.date = call.date;
        record.contactId = call.contactId;
        record.duration = call.duration;
        record.flags = call.flags;
        record.day = dayText(days_.dayOf(call.date));
        calls_.push_back(record);
        auto& [name, label] = names_[{call.address, call.contactId}];
        if (!call.name.empty()) name = call.name;
        if (!call.label.empty()) label = call.label;
        dirty_ = true;
    }

    /// Newest first.
    std::vector<CallRecord> calls(Filter filter) const {
        if (dirty_) {
            std::sort(calls_.begin(), calls_.end(), [](const CallRecord& one, const CallRecord& other) {
                return one.date != other.date ? one.date > other.date : one.rowId > other.rowId;
            });
            dirty_ = false;
        }
        std::vector<CallRecord> found;
        for (CallRecord call : calls_) {
            if (filter != Filter::all && listOf(call.flags, call.duration) != filter) continue;
            const auto named = names_.find({call.address, call.contactId});
            call.name = named->second.first;
            call.label = named->second.second;
            found.push_back(call);
        }
        return found;
    }

    static bool isSame(const CallRecord& one, const CallRecord& other) {
        if (one.contactId != other.contactId) return false;
        return one.contactId != noContact || one.address == other.address;
    }

    static std::vector<CallRecord> fold(const std::vector<CallRecord>& calls) {
        std::vector<CallRecord> runs;
        for (const CallRecord& call : calls) {
            if (!runs.empty() && isSame(runs.back(), call)) {
                ++runs.back().count;
            } else {
                runs.push_back(call);
            }
        }
        return runs;
    }

    std::vector<CallRecord> days() const {
        std::map<std::string, CallRecord> days;
        for (const CallRecord& call : calls(Filter::all)) {
            CallRecord& day = days[call.day];
            if (day.day.empty()) {
                day.day = call.day;
                day.count = 0;
                day.date = call.date;
                day.rowId = day.logId = call.rowId;
            }
            ++day.count;
            switch (listOf(call.flags, call.duration)) {
                case Filter::dialled:
                    ++day.dialledCount, day.dialledDuration += call.duration;
                    break;
                case Filter::received:
                    ++day.receivedCount, day.receivedDuration += call.duration;
                    break;
                default:
                    ++day.missedCount;
                    break;
            }
        }
        std::vector<CallRecord> rows;
        for (auto at = days.rbegin(); at != days.rend(); ++at) rows.push_back(at->second);
        return rows;
    }

    std::vector<CallRecord> rows(Filter filter, Mode mode) const {
        switch (rowKindOf(filter, mode)) {
            case RowKind::day:
                return days();
            case RowKind::run:
                return fold(calls(filter));
            case RowKind::call:
                break;
        }
        return calls(filter);
    }

    std::vector<CallRecord> ofDay(Filter filter, const std::string& day) const {
        return where(filter, [&](const CallRecord& call) { return call.day == day; });
    }

    template <class Condition>
    std::vector<CallRecord> where(Filter filter, Condition&& condition) const {
        std::vector<CallRecord> found;
        for (const CallRecord& call : calls(filter)) {
            if (condition(call)) found.push_back(call);
        }
        return found;
    }

    std::int64_t remove(const std::vector<CallRecord>& gone, std::int64_t bound = anyRowId) {
        const auto before = calls_.size();
        std::erase_if(calls_, [&](const CallRecord& call) {
            return call.rowId <= bound && std::any_of(gone.begin(), gone.end(),
                                                      [&](const CallRecord& one) { return one.rowId == call.rowId; });
        });
        forgetParties();
        return static_cast<std::int64_t>(before - calls_.size());
    }

    std::int64_t link(const std::string& address, std::int32_t contact, const std::string& name,
                      const std::string& label) {
        std::int64_t count = 0;
        for (CallRecord& call : calls_) {
            if (call.address != address) continue;
            call.contactId = contact;
            ++count;
        }
        if (count > 0) names_[{address, contact}] = {name, label};
        forgetParties();
        return count;
    }

    std::int64_t seconds(Filter filter) const {
        std::int64_t sum = 0;
        for (const CallRecord& call : calls(filter)) sum += call.duration;
        return sum;
    }

  private:
    /// Names go with the last call of their number.
    void forgetParties() {
        std::erase_if(names_, [&](const auto& party) {
            return std::none_of(calls_.begin(), calls_.end(), [&](const CallRecord& call) {
                return call.address == party.first.first && call.contactId == party.first.second;
            });
        });
    }

    mutable std::vector<CallRecord> calls_;
    mutable bool dirty_ = false;
    std::map<std::pair<std::string, std::int32_t>, std::pair<std::string, std::string>> names_;
    mutable LocalDays days_;
};

/// Calls with few parties and few moments, so that runs, equal seconds and shared days are common.
class CallMaker {
  public:
    explicit CallMaker(unsigned seed) : random_(seed) {}

    NewCall call() {
        static constexpr std::int32_t flagChoices[] = {0, 1, 4, 5, 16, 17, 49, 0x100004, 0x40000005, 9};
        static const std::string addresses[] = {"+4930123456",   "5551234",    "anna@example.com", "",
                                                "O'Neill \"1\"", "+7 495 000", "5559876"};
        static const std::string names[] = {"", "Anna Größe", "Борис", "O'Neill", "STRASSE"};
        NewCall call;
        call.address = addresses[pick(7)];
        call.contactId = pick(3) == 0 ? static_cast<std::int32_t>(pick(3)) : noContact;
        if (pick(2) == 0) call.name = names[pick(5)];
        if (pick(4) == 0) call.label = "home";
        if (pick(3) == 0) call.location = "Berlin";
        call.date = 1'700'000'000 + static_cast<std::int64_t>(pick(6)) * 40'000 + static_cast<std::int64_t>(pick(5));
        call.duration = pick(2) == 0 ? 0 : static_cast<std::int32_t>(pick(500));
        call.flags = flagChoices[pick(10)];
        return call;
    }

    std::size_t pick(std::size_t choices) { return random_() % choices; }

  private:
    std::mt19937 random_;
};

/// Everything that can be read agrees with the model, and what is derived agrees with the calls.
void expectSame(const CallStore& store, const LogModel& model);

}  // namespace quorvel::store
