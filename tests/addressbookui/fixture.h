// What every test of the contact screens stands on: a book in a folder of its own, a window with a stack of screens,
// and the addresses that were opened.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/addressbookui/card_screen.h"
#include "desktop/addressbookui/contact_form.h"
#include "desktop/addressbookui/sharing.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/sheet.h"
#include "tests/uikit/fixture.h"

namespace addressbookui::test {

using contacts::Book;
using contacts::Contact;
using contacts::Property;
using Texts = std::vector<std::string>;

inline Contact anna() {
    Contact contact;
    contact.setText(Property::firstName, "Anna");
    contact.setText(Property::lastName, "Berg");
    contact.setText(Property::organization, "Harbour Museum");
    contact.setText(Property::birthday, "1984-02-28");
    contact.setText(Property::note, "Plays the viola.");
    contact.lists[Property::phone] = {{3, "_$!<Mobile>!$_", "+49 151 23456789", {}},
                                      {7, "_$!<Work>!$_", "+49 30 123456", {}}};
    contact.lists[Property::email] = {{0, "_$!<Home>!$_", "anna@example.org", {}}};
    contact.lists[Property::url] = {{0, "_$!<HomePage>!$_", "example.org", {}}};
    contact.lists[Property::address] = {
        {0, "_$!<Home>!$_", "", {{"Street", "Lindenstr. 5"}, {"City", "Berlin"}, {"ZIP", "10969"}}}};
    contact.others = {"X-HOBBY:viola"};
    return contact;
}

inline Contact personOfNumber(const std::string& number) {
    Contact contact;
    contact.lists[Property::phone] = {{0, "_$!<Mobile>!$_", number, {}}};
    return contact;
}

class ContactScreenTest : public uikit::test::ToolkitTest {
  protected:
    ContactScreenTest() {
        char name[] = "/tmp/contact-screens-XXXXXX";
        folder_ = ::mkdtemp(name);
        contacts::setLanguage("en");
        contacts::setHomeRegion("DE");
        EXPECT_EQ(Book::shared().open(folder_ / "contacts"), std::nullopt);
        setShareFolder(folder_ / "shared");
        uikit::Application::shared()->setUrlOpener([this](const std::string& address) {
            opened.push_back(address);
            return true;
        });
        root_ = objc::Ref<uikit::ViewController>::make();
        navigation_ = objc::Ref<uikit::NavigationController>::make<"initWithRootViewController:">(root_->object());
        window().setRootViewController(navigation_);
        window().makeKeyAndVisible();
    }
    ~ContactScreenTest() override {
        navigation_ = {};
        root_ = {};
        Book::shared().close();
        dispatch::drainMainQueue();
        std::filesystem::remove_all(folder_);
    }

    int save(const Contact& contact) { return (*Book::shared().write({contact})).front(); }
    /// The saved person as applications have them.
    static objc::Ref<addressbook::Record> person(int record) {
        return addressbook::Record::of(*Book::shared().contact(record));
    }

    void push(uikit::ViewController* screen) {
        objc::send<"pushViewController:animated:">(navigation_->object(), screen->object(), false);
        settle();
    }
    void settle() {
        advance(2);
        window().layoutIfNeeded();
    }
    uikit::NavigationController& navigation() { return *navigation_; }
    /// The screen in front, or what is presented over it.
    uikit::ViewController* front() {
        uikit::ViewController* screen = navigation_;
        while (screen->presentedViewController()) screen = screen->presentedViewController();
        auto* stack = screen->asNavigationController();
        return stack ? stack->topViewController() : screen;
    }
    ContactForm* form() { return objc::peerIf<ContactForm>(front()->object()); }

    /// Label and text of each row of the card, "mobile: 0151"; a button's text alone.
    static Texts rowsOf(CardScreen* screen) {
        Texts texts;
        for (const auto& row : cardRows(screen))
            texts.push_back(row.label.empty() ? row.text : row.label + ": " + row.text);
        return texts;
    }
    static std::vector<CardRow> cardRows(CardScreen* screen) {
        std::vector<CardRow> rows;
        for (long section = 0; section < screen->numberOfSections({}); ++section)
            for (long row = 0; row < screen->numberOfRows({}, section); ++row)
                rows.push_back(objc::peerOf<CardCell>(
                                   screen->cellForRow(screen->tableView()->object(), uikit::indexPath({section, row})))
                                   ->row());
        return rows;
    }
    /// Taps the row that says it, as a finger does.
    void tapRow(CardScreen* screen, const std::string& text) {
        for (long section = 0; section < screen->numberOfSections({}); ++section)
            for (long row = 0; row < screen->numberOfRows({}, section); ++row) {
                auto* cell = objc::peerOf<CardCell>(
                    screen->cellForRow(screen->tableView()->object(), uikit::indexPath({section, row})));
                if (cell->row().text != text) continue;
                ASSERT_TRUE(screen->tableView()->tapRow(row, section));
                settle();
                return;
            }
        FAIL() << "no row says " << text;
    }
    /// Ends the sheet or alert in front by the choice of that title.
    void take(const std::string& title) {
        auto* sheet = uikit::frontSheet();
        ASSERT_NE(sheet, nullptr);
        const auto& choices = sheet->content().choices;
        for (std::size_t i = 0; i < choices.size(); ++i)
            if (choices[i].title == title) {
                sheet->dismiss(static_cast<long>(i), false);
                settle();
                return;
            }
        FAIL() << "no choice is called " << title;
    }
    static Texts choices() {
        Texts titles;
        if (auto* sheet = uikit::frontSheet())
            for (const auto& each : sheet->content().choices) titles.push_back(each.title);
        return titles;
    }
    /// Types into the row's field, in place of what is there.
    void fill(long section, long row, const std::string& text) {
        auto* shown = form();
        ASSERT_NE(shown, nullptr);
        auto* cell = objc::peerOf<FormCell>(shown->tableView()->cellAtPath(uikit::indexPath({section, row})));
        ASSERT_NE(cell, nullptr);
        ASSERT_TRUE(cell->field()->becomeFirstResponder());
        cell->field()->setText({});
        cell->field()->insertText(text);
        settle();
    }
    void press(uikit::BarButtonItem* item) {
        ASSERT_NE(item, nullptr);
        item->fire();
        settle();
    }
    static uikit::NavigationItem* bar(uikit::ViewController* screen) {
        return objc::peerOf<uikit::NavigationItem>(screen->navigationItem());
    }
    const std::filesystem::path& folder() const { return folder_; }

    Texts opened;

  private:
    std::filesystem::path folder_;
    objc::Ref<uikit::ViewController> root_;
    objc::Ref<uikit::NavigationController> navigation_;
};

/// A delegate of both cards that writes down what it hears and answers as it is told.
class CardDelegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestCardDelegate"};
    static void define(objc::ClassDefinition<CardDelegate>& definition) {
        definition
            .method<"personViewController:shouldPerformDefaultActionForPerson:property:identifier:",
                    &CardDelegate::shouldPerform>()
            .method<"unknownPersonViewController:shouldPerformDefaultActionForPerson:property:identifier:",
                    &CardDelegate::shouldPerform>()
            .method<"unknownPersonViewController:didResolveToPerson:", &CardDelegate::resolved>();
    }
    bool shouldPerform(objc::Object, const void* asked, int property, int identifier) {
        heard.push_back("perform " + std::to_string(property) + " " + std::to_string(identifier) +
                        (asked == expected ? "" : " of another person"));
        return allows;
    }
    void resolved(objc::Object, const void* person) {
        heard.push_back(person ? "resolved to " + std::to_string(ABRecordGetRecordID(person)) : "resolved to nobody");
        if (whenResolved) whenResolved();
    }
    objc::Object object() const { return objc::Object{self}; }

    Texts heard;
    const void* expected = nullptr;
    bool allows = true;
    std::function<void()> whenResolved;
};

}  // namespace addressbookui::test
