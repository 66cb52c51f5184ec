// Contacts in a folder of their own, and objects as plain values.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/numbers.h"

namespace contacts::test {

class BookTest : public testing::Test {
  protected:
    BookTest() {
        std::string name = (std::filesystem::temp_directory_path() / "contacts-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
        folder_ = name;
        setHomeRegion("US");
        EXPECT_EQ(book().open(folder_), std::nullopt);
    }
    ~BookTest() override {
        book().close();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    static Book& book() { return Book::shared(); }
    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path file() const { return folder_ / "contacts.db"; }

    static LabelledValue value(int identifier, const std::string& text, const std::string& label = {}) {
        return {identifier, label, text, {}};
    }
    /// A contact with these numbers.
    static Contact person(const std::string& name, const std::vector<std::string>& numbers = {}) {
        Contact contact;
        contact.setText(Property::firstName, name);
        for (const std::string& number : numbers)
            contact.lists[Property::phone].push_back(
                value(static_cast<int>(contact.lists[Property::phone].size()), number));
        return contact;
    }
    /// Writes them and answers their records.
    static std::vector<int> add(const std::vector<Contact>& contacts) {
        const auto written = book().write(contacts);
        if (!written) throw std::runtime_error(written.error().message);
        return *written;
    }
    /// The record that the address belongs to; 0 for nobody.
    static int owner(const std::string& address) {
        const auto match = book().match(address);
        return match ? match->record : 0;
    }

  private:
    std::filesystem::path folder_;
};

}  // namespace contacts::test
