// Tables of values, each under the number of its property.
#include "desktop/addressbook/contact_database.h"

#include "desktop/quorvel/store/database.h"

namespace contacts {
namespace {

using quorvel::store::Connection;
using quorvel::store::ErrorKind;
using quorvel::store::Failure;
using quorvel::store::guarded;
using quorvel::store::ResetLater;
using quorvel::store::Statement;
using quorvel::store::Transaction;

constexpr std::int64_t applicationId = 0x51756f63;  // "Quoc"
constexpr std::int64_t schemaVersion = 1;
constexpr std::chrono::seconds busyBound{10};

// A text of one value stands at position 0 with an empty key; the parts of a dictionary share their position.
constexpr const char* tables = R"(
create table contact (
    record integer primary key autoincrement,
    created integer not null,
    modified integer not null
);
create table field (
    contact integer not null,
    property integer not null,
    position integer not null,
    key text not null,
    identifier integer not null,
    label text not null,
    value text not null,
    primary key (contact, property, position, key)
) without rowid;
create table other (
    contact integer not null, position integer not null, line text not null,
    primary key (contact, position)
) without rowid;
create table picture (contact integer primary key, image blob not null);
create table blocked (position integer primary key, address text not null);
create table favourite (position integer primary key, contact integer not null, address text not null);
pragma application_id = 0x51756f63;
pragma user_version = 1;
)";

std::string named(const Connection& connection) { return "The file " + connection.path().string(); }

Failure damage(const Connection& connection, const char* what) {
    return {quorvel::store::errorOf(SQLITE_CORRUPT, what, connection.path())};
}

/// The number as an identifier of a contact or value; a file that others have written may hold any.
int identifierOf(const Connection& connection, std::int64_t number) {
    if (number < 0 || number > INT32_MAX) throw damage(connection, "an identifier is out of range");
    return static_cast<int>(number);
}

/// The file may say that it is ours and lack what ours has.
void checkTables(Connection& connection) {
    for (const char* text :
         {"select record, created, modified from contact",
          "select contact, property, position, key, identifier, label, value from field",
          "select contact, position, line from other", "select contact, image from picture",
          "select position, address from blocked", "select position, contact, address from favourite",
          "select seq from sqlite_sequence where name = 'contact'"}) {
        try {
            Statement(connection.handle(), text, connection.path());
        } catch (const Failure& failure) {
            if (failure.error.kind != ErrorKind::failed) throw;
            throw damage(connection, sqlite3_errmsg(connection.handle()));
        }
    }
}

void prepare(Connection& connection) {
    Transaction transaction(connection, Transaction::Kind::write);
    const auto application = connection.integerOf("pragma application_id");
    const auto version = connection.integerOf("pragma user_version");
    if (application == 0 && version == 0 && connection.integerOf("select count(*) from sqlite_schema") == 0) {
        connection.execute(tables);
    } else if (application != applicationId) {
        throw Failure{{ErrorKind::foreign, named(connection) +
                                               " is a database of another program. Move it away, and contacts begin "
                                               "anew; it was left as it is."}};
    } else if (version > schemaVersion) {
        throw Failure{
            {ErrorKind::newer, named(connection) + " was written by a later version of this program (format " +
                                   std::to_string(version) + ", this one reads " + std::to_string(schemaVersion) +
                                   "). Update the program; the file was left as it is."}};
    }
    checkTables(connection);
    transaction.commit();
}

void loadContacts(Connection& connection, Content& content) {
    Statement& rows = connection.statement("select record, created, modified from contact order by record");
    while (rows.step()) {
        Contact& contact = content.contacts.emplace_back();
        contact.record = identifierOf(connection, rows.integer(0));
        contact.created = rows.integer(1);
        contact.modified = rows.integer(2);
    }
}

/// The contact of that record, searched from the one before on: both lists are in the order of the records.
Contact* findFrom(std::vector<Contact>& contacts, std::size_t& at, std::int64_t record) {
    while (at < contacts.size() && contacts[at].record < record) ++at;
    return at < contacts.size() && contacts[at].record == record ? &contacts[at] : nullptr;
}

void loadFields(Connection& connection, std::vector<Contact>& contacts) {
    Statement& rows = connection.statement(
        "select contact, property, position, key, identifier, label, value from field "
        "order by contact, property, position, key");
    std::size_t at = 0;
    std::int64_t position = -1;
    const std::vector<LabelledValue>* before = nullptr;
    while (rows.step()) {
        Contact* contact = findFrom(contacts, at, rows.integer(0));
        if (!contact) continue;
        const auto property = static_cast<Property>(rows.integer(1));
        const std::string text(rows.text(6));
        if (!isList(property)) {
            contact->setText(property, text);
            continue;
        }
        const int identifier = identifierOf(connection, rows.integer(4));
        auto& values = contact->lists[property];
        if (&values != before || rows.integer(2) != position)
            values.push_back({identifier, std::string(rows.text(5)), {}, {}});
        before = &values;
        position = rows.integer(2);
        if (const auto key = rows.text(3); key.empty())
            values.back().text = text;
        else
            values.back().parts.emplace(key, text);
    }
}

void loadOthers(Connection& connection, std::vector<Contact>& contacts) {
    Statement& rows = connection.statement("select contact, line from other order by contact, position");
    std::size_t at = 0;
    while (rows.step())
        if (Contact* contact = findFrom(contacts, at, rows.integer(0))) contact->others.emplace_back(rows.text(1));
}

}  // namespace

ContactDatabase::ContactDatabase(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}
ContactDatabase::ContactDatabase(ContactDatabase&&) noexcept = default;
ContactDatabase& ContactDatabase::operator=(ContactDatabase&&) noexcept = default;
ContactDatabase::~ContactDatabase() = default;

Result<ContactDatabase> ContactDatabase::open(const std::filesystem::path& path) {
    return guarded([&] {
        auto connection = std::make_unique<Connection>(path, Connection::Use::write, busyBound, std::string());
        prepare(*connection);
        return ContactDatabase(std::move(connection));
    });
}

Result<Content> ContactDatabase::load() {
    return guarded([&] {
        Content content;
        const Transaction transaction(*connection_, Transaction::Kind::read);
        loadContacts(*connection_, content);
        loadFields(*connection_, content.contacts);
        loadOthers(*connection_, content.contacts);
        Statement& blocked = connection_->statement("select address from blocked order by position");
        while (blocked.step()) content.blocked.emplace_back(blocked.text(0));
        Statement& favourites = connection_->statement("select contact, address from favourite order by position");
        while (favourites.step())
            content.favourites.push_back(
                {identifierOf(*connection_, favourites.integer(0)), std::string(favourites.text(1))});
        content.newestRecord = identifierOf(
            *connection_,
            connection_->integerOf("select coalesce(max(seq), 0) from sqlite_sequence where name = 'contact'"));
        seenVersion_ = connection_->integerOf("pragma data_version");
        return content;
    });
}

bool ContactDatabase::wasChangedByOthers() {
    const auto changed = guarded([&] { return connection_->integerOf("pragma data_version") != seenVersion_; });
    return changed && *changed;
}

Result<std::optional<std::string>> ContactDatabase::picture(int record) {
    return guarded([&]() -> std::optional<std::string> {
        Statement& row = connection_->statement("select image from picture where contact = ?1");
        const ResetLater later(row.bind(1, record));
        if (!row.step()) return std::nullopt;
        return std::string(row.text(0));
    });
}

int ContactDatabase::add(const Contact& contact, std::int64_t now) {
    connection_->statement("insert into contact (created, modified) values (?1, ?1)").bind(1, now).run();
    const int record = static_cast<int>(connection_->lastRowId());
    writeValues(record, contact);
    return record;
}

void ContactDatabase::replace(const Contact& contact, std::int64_t now) {
    Statement& known = connection_->statement("select 1 from contact where record = ?1");
    {
        const ResetLater later(known.bind(1, contact.record));
        if (!known.step())
            throw Failure{{ErrorKind::badInput,
                           "The contact has been deleted by another program. Add it anew to keep it; nothing was "
                           "changed."}};
    }
    connection_->statement("update contact set modified = ?2 where record = ?1")
        .bind(1, contact.record)
        .bind(2, now)
        .run();
    for (const char* text : {"delete from field where contact = ?1", "delete from other where contact = ?1"})
        connection_->statement(text).bind(1, contact.record).run();
    writeValues(contact.record, contact);
}

void ContactDatabase::remove(int record) {
    for (const char* text : {"delete from contact where record = ?1", "delete from field where contact = ?1",
                             "delete from other where contact = ?1", "delete from picture where contact = ?1",
                             "delete from favourite where contact = ?1"})
        connection_->statement(text).bind(1, record).run();
}

void ContactDatabase::writeValues(int record, const Contact& contact) {
    Statement& field = connection_->statement("insert into field values (?1, ?2, ?3, ?4, ?5, ?6, ?7)");
    const auto put = [&](Property property, std::int64_t position, std::string_view key, const LabelledValue& value,
                         std::string_view text) {
        field.bind(1, record).bind(2, static_cast<std::int64_t>(property)).bind(3, position).bind(4, key);
        field.bind(5, value.identifier).bind(6, std::string_view(value.label)).bind(7, text).run();
    };
    for (const auto& [property, text] : contact.texts) put(property, 0, "", {}, text);
    for (const auto& [property, values] : contact.lists) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            const auto position = static_cast<std::int64_t>(i);
            for (const auto& [key, text] : values[i].parts) put(property, position, key, values[i], text);
            if (values[i].parts.empty()) put(property, position, "", values[i], values[i].text);
        }
    }
    Statement& other = connection_->statement("insert into other values (?1, ?2, ?3)");
    for (std::size_t i = 0; i < contact.others.size(); ++i)
        other.bind(1, record).bind(2, static_cast<std::int64_t>(i)).bind(3, std::string_view(contact.others[i])).run();
    if (!contact.picture) return;
    connection_->statement("delete from picture where contact = ?1").bind(1, record).run();
    if (contact.picture->empty()) return;
    connection_->statement("insert into picture values (?1, cast(?2 as blob))")
        .bind(1, record)
        .bind(2, std::string_view(*contact.picture))
        .run();
}

Result<std::vector<int>> ContactDatabase::write(const std::vector<Contact>& written, const std::vector<int>& removed,
                                                std::int64_t now) {
    return guarded([&] {
        std::vector<int> records;
        Transaction transaction(*connection_, Transaction::Kind::write);
        for (const int record : removed) remove(record);
        for (const Contact& contact : written) {
            if (contact.record > 0) replace(contact, now);
            records.push_back(contact.record > 0 ? contact.record : add(contact, now));
        }
        transaction.commit();
        return records;
    });
}

Result<Done> ContactDatabase::setBlocked(const std::vector<std::string>& blocked) {
    return guarded([&] {
        Transaction transaction(*connection_, Transaction::Kind::write);
        connection_->statement("delete from blocked").run();
        for (const std::string& address : blocked)
            connection_->statement("insert into blocked (address) values (?1)")
                .bind(1, std::string_view(address))
                .run();
        transaction.commit();
        return Done{};
    });
}

Result<Done> ContactDatabase::setFavourites(const std::vector<Favourite>& favourites) {
    return guarded([&] {
        Transaction transaction(*connection_, Transaction::Kind::write);
        connection_->statement("delete from favourite").run();
        for (const Favourite& each : favourites)
            connection_->statement("insert into favourite (contact, address) values (?1, ?2)")
                .bind(1, each.record)
                .bind(2, std::string_view(each.address))
                .run();
        transaction.commit();
        return Done{};
    });
}

}  // namespace contacts
