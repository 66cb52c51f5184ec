// The contacts' database: its file, and values that belong to nobody.
#include <ctime>

#include "desktop/addressbook/contact_database.h"
#include "desktop/quorvel/store/care.h"
#include "desktop/quorvel/store/database.h"
#include "desktop/quorvel/store/log_files.h"
#include "desktop/quorvel/store/page_copy.h"
#include "tools/doctor/check.h"

namespace tools {
namespace {

using quorvel::store::Connection;
using quorvel::store::Transaction;

constexpr std::chrono::seconds busyBound{10};

struct Belonging {
    const char* what;
    const char* table;
    const char* column;
};
constexpr Belonging belongings[] = {{"values", "field", "contact"},
                                    {"lines of cards", "other", "contact"},
                                    {"pictures", "picture", "contact"},
                                    {"favourites", "favourite", "contact"}};

std::string nobodys(const Belonging& each) {
    return std::string(" from ") + each.table + " where " + each.column + " not in (select record from contact)";
}

class Contacts : public Organ {
  public:
    explicit Contacts(std::filesystem::path file) : file_(std::move(file)) {}
    const char* name() const override { return "contacts"; }

    Sentences examine() override {
        if (!quorvel::store::isThere(file_)) return {};
        const auto findings = quorvel::store::guarded([&] {
            Connection connection(file_, Connection::Use::readFileOnly, busyBound, {});
            const Transaction moment(connection, Transaction::Kind::read);
            Sentences found = quorvel::store::findDamage(connection);
            if (!found.empty()) return found;
            for (const auto& each : belongings) {
                const auto lost = connection.integerOf("select count(*)" + nobodys(each));
                if (lost > 0)
                    found.push_back(std::to_string(lost) + ' ' + each.what + " belong to a contact that is not there.");
            }
            return found;
        });
        if (!findings) return {findings.error().message};
        if (!(*findings).empty()) return *findings;
        // What only the program itself can say: the version, and that every value makes sense.
        auto database = contacts::ContactDatabase::open(file_);
        if (!database) return {database.error().message};
        const auto content = (*database).load();
        return content ? Sentences{} : Sentences{content.error().message};
    }

    Sentences mend() override {
        const auto done = mendInPlace();
        if (done) return *done;
        if (done.error().kind != quorvel::store::ErrorKind::damaged) return {done.error().message};
        const auto aside = quorvel::store::CallStore::setAside(file_);
        if (!aside) return {aside.error().message};
        return {"The contacts cannot be read any more. The file is kept as " + (*aside).string() +
                ", and contacts begin anew: bring them back from a vCard file with \"quorvelctl contacts import\"."};
    }

  private:
    quorvel::store::Result<Sentences> mendInPlace() const {
        return quorvel::store::guarded([&] {
            const auto kept = quorvel::store::formerName(file_, "before-mending", std::time(nullptr));
            Connection connection(file_, Connection::Use::write, busyBound, {});
            Transaction change(connection, Transaction::Kind::write);
            {
                Connection reading(file_, Connection::Use::read, busyBound, {});
                Connection copy(kept, Connection::Use::write, busyBound, {});
                const Transaction moment(reading, Transaction::Kind::read);
                quorvel::store::copyPages(reading, copy, {});
            }
            connection.execute("reindex");
            for (const auto& each : belongings) connection.execute(("delete" + nobodys(each)).c_str());
            if (const auto damage = quorvel::store::findDamage(connection); !damage.empty()) {
                throw quorvel::store::Failure{
                    quorvel::store::errorOf(SQLITE_CORRUPT, "more than its indices is damaged", file_)};
            }
            change.commit();
            return Sentences{"The contacts as they were are kept as " + kept.string() + '.',
                             "What belonged to nobody was taken out, and the indices were made anew."};
        });
    }

    std::filesystem::path file_;
};

}  // namespace

std::unique_ptr<Organ> contactsOrgan(const quorvel::DataDirectory& directory) {
    return std::make_unique<Contacts>(directory.contacts() / "contacts.db");
}

}  // namespace tools
