// The contacts' database as a file of arbitrary bytes, and as one whose rows and tables somebody has changed: it is
// read whole or refused, and what was read can be shown, written and read again.
#include <sqlite3.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <source_location>
#include <string>
#include <string_view>

#include "desktop/addressbook/contact_database.h"
#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/vcard_writer.h"

namespace {

using contacts::ContactDatabase;

void expect(bool holds, const std::source_location& where = std::source_location::current()) {
    if (holds) return;
    std::fprintf(stderr, "line %u does not hold\n", static_cast<unsigned>(where.line()));
    std::abort();
}

/// In memory where there is such a place; gone with the process.
class Scratch {
  public:
    Scratch() {
        const bool hasMemory = std::filesystem::is_directory("/dev/shm");
        std::string pattern = std::string(hasMemory ? "/dev/shm" : "/tmp") + "/contacts_fuzzer-XXXXXX";
        expect(mkdtemp(pattern.data()) != nullptr);
        folder_ = pattern;
    }
    ~Scratch() { std::filesystem::remove_all(folder_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    std::filesystem::path file() const { return folder_ / "contacts.db"; }
    void clear() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) std::filesystem::remove(entry);
    }

  private:
    std::filesystem::path folder_;
};

/// Takes values from the input; zeros behind its end.
class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}
    bool atEnd() const { return at_ == end_; }
    std::uint8_t byte() { return atEnd() ? 0 : *at_++; }
    std::int64_t number() {
        static constexpr std::int64_t odd[] = {0,         1,         2,         -1,        INT32_MAX,
                                               INT64_MAX, INT64_MIN, INT32_MIN, 1LL << 32, (1LL << 32) + 1};
        const auto first = byte();
        return first < 200 ? first : odd[first % std::size(odd)];
    }
    std::string text() {
        std::string made;
        for (auto length = byte() % 24; length > 0; --length) made += static_cast<char>(byte());
        return made;
    }

  private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

void bindAny(sqlite3_stmt* statement, int parameter, Input& input) {
    switch (input.byte() % 8) {
        case 0:
            sqlite3_bind_null(statement, parameter);
            break;
        case 1:
        case 2: {
            const auto text = input.text();
            sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
            break;
        }
        case 3: {
            const auto bytes = input.text();
            sqlite3_bind_blob(statement, parameter, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
            break;
        }
        case 4:
            sqlite3_bind_double(statement, parameter, static_cast<double>(input.number()) / 3);
            break;
        default:
            sqlite3_bind_int64(statement, parameter, input.number());
    }
}

/// One change by another program; whatever it answers.
void change(sqlite3* database, Input& input) {
    static constexpr const char* texts[] = {
        "insert or replace into contact values (?1, ?2, ?3)",
        "insert or replace into field values (?1, ?2, ?3, ?4, ?5, ?6, ?7)",
        "insert or replace into field values (?1, 3, ?2, '', ?3, ?4, ?5)",
        "insert or replace into field values (?1, 5, ?2, ?3, ?4, '', ?5)",
        "insert or replace into other values (?1, ?2, ?3)",
        "insert or replace into picture values (?1, ?2)",
        "insert or replace into blocked values (?1, ?2)",
        "insert or replace into favourite values (?1, ?2, ?3)",
        "update contact set record = ?1 where record = ?2",
        "update sqlite_sequence set seq = ?1",
        "delete from contact where record = ?1",
        "delete from field where contact = ?1",
        "drop table picture",
        "drop table field",
        "alter table other rename to more",
        "alter table contact drop column modified",
        "pragma user_version = 2",
        "drop table blocked; create view blocked as with recursive n(position) as (select 1 union all select position "
        "+ 1 from n) select position, 'a' as address from n",
        "create trigger t after insert on contact begin delete from contact; end",
    };
    const char* rest = texts[input.byte() % std::size(texts)];
    while (rest && *rest) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database, rest, -1, &statement, &rest) != SQLITE_OK) return;
        for (int i = 1; i <= sqlite3_bind_parameter_count(statement); ++i) bindAny(statement, i, input);
        sqlite3_step(statement);
        sqlite3_finalize(statement);
    }
}

void makeDatabase(const std::filesystem::path& file) {
    auto made = ContactDatabase::open(file);
    expect(made.ok());
    contacts::Contact contact;
    contact.setText(contacts::Property::firstName, "Anna");
    contact.lists[contacts::Property::phone] = {{1, "_$!<Home>!$_", "+4930100", {}}};
    contact.lists[contacts::Property::address] = {{1, "", "", {{"Street", "Hof 1"}, {"City", "Berlin"}}}};
    contact.others = {"X-A:b"};
    expect(made->write({contact, contact}, {}, 1).ok());
}

void readAndWrite(const std::filesystem::path& file) {
    auto opened = ContactDatabase::open(file);
    if (!opened) {
        expect(!opened.error().message.empty());
        return;
    }
    auto content = opened->load();
    if (!content) return;
    int before = 0;
    for (auto& contact : content->contacts) {
        expect(contact.record >= before);
        before = contact.record;
        contacts::compositeName(contact);
        vcard::write(contacts::cardOf(contact), vcard::Version::v30);
        static_cast<void>(opened->picture(contact.record));
    }
    expect(content->newestRecord >= 0);
    if (content->contacts.empty()) return;
    contacts::Contact changed = content->contacts.front();
    changed.setText(contacts::Property::note, "changed");
    if (changed.record > 0 && opened->write({changed}, {}, 2)) {
        const auto again = opened->load();
        if (!again) std::fprintf(stderr, "%s\n", again.error().message.c_str());
        expect(again.ok() && again->contacts.size() == content->contacts.size());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Scratch scratch;
    scratch.clear();
    constexpr std::string_view header = "SQLite format 3";
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (bytes.starts_with(header)) {
        std::ofstream(scratch.file(), std::ios::binary) << bytes;
    } else {
        static const std::string made = [] {
            makeDatabase(scratch.file());
            std::ifstream stream(scratch.file(), std::ios::binary);
            return std::string{std::istreambuf_iterator<char>(stream), {}};
        }();
        std::ofstream(scratch.file(), std::ios::binary) << made;
        sqlite3* database = nullptr;
        expect(sqlite3_open(scratch.file().c_str(), &database) == SQLITE_OK);
        sqlite3_exec(database, "pragma synchronous = off", nullptr, nullptr, nullptr);
        Input input(data, size);
        for (int changes = 0; !input.atEnd() && changes < 16; ++changes) change(database, input);
        sqlite3_close(database);
    }
    readAndWrite(scratch.file());
    return 0;
}
