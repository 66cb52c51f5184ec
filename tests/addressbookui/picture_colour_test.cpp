// The colour behind a caller's initials: the same in the lists and on the card.
#include <set>

#include "desktop/addressbookui/person_screen.h"
#include "desktop/addressbookui/unknown_person_screen.h"
#include "desktop/quorvel/visual/call_cell.h"
#include "desktop/quorvel/visual/contact_picture.h"
#include "desktop/quorvel/visual/sources.h"
#include "desktop/quorvel/visual/visual.h"
#include "tests/addressbookui/fixture.h"
#include "tests/quorvel_visual/entry.h"

namespace addressbookui::test {
namespace {

using quorvel::pictureTone;

class PictureColour : public ContactScreenTest {
  protected:
    PictureColour() {
        quorvel::registerVisualClasses();
        quorvel::sources().showsPictures = [] { return true; };
        quorvel::sources().picture = [](int) { return objc::Object{}; };
        quorvel::sources().number = [](const std::string& number) { return number; };
        quorvel::sources().groupsByDay = [] { return false; };
    }
    ~PictureColour() override { quorvel::resetSources(); }

    static std::uint32_t pixelOf(uikit::View* view, int x, int y) {
        const graphics::Image image(view->frame().size, 1);
        graphics::Canvas canvas(image);
        view->layoutIfNeeded();
        view->render(canvas);
        return image.pixel(x, y);
    }
    /// The ground of the picture's circle, left of the initials.
    static std::uint32_t inRow(quorvel::test::Entry::Fields fields) {
        auto row = objc::Ref<quorvel::CallCell>::make<"initWithStyle:reuseIdentifier:">(0L, objc::Object{});
        row->setFrame({{}, {320, 50}});
        row->setCallEntry(quorvel::test::Entry::make(std::move(fields))->object());
        return pixelOf(row, 33, 25);
    }
    std::uint32_t onCard(CardScreen* card) {
        push(card);
        auto* header = card->tableView()->tableHeaderView();
        return pixelOf(header, 19, static_cast<int>(header->frame().height() / 2));
    }
};

TEST_F(PictureColour, ofAContactIsTheSameInARowAndOnTheCard) {
    const int record = save(anna());
    auto card = objc::Ref<PersonScreen>::make();
    card->setDisplayedPerson(person(record).self());
    const auto color = onCard(card);
    EXPECT_EQ(inRow({.name = "Anna Berg", .number = "+4915123456789", .contact = record}), color);
    EXPECT_EQ(inRow({.name = "Anna", .number = "+4930123456", .contact = record}), color);
}

TEST_F(PictureColour, ofANamedCallerWithoutAContactIsTheSameInARowAndOnTheCard) {
    auto card = objc::Ref<UnknownPersonScreen>::make();
    card->setAlternateName(uikit::nsString("Harbour Office"));
    const auto caller = addressbook::Record::of(personOfNumber("+442079460001"));
    card->setDisplayedPerson(caller.self());
    const auto color = onCard(card);
    for (const int contact : {-1, 0})
        EXPECT_EQ(inRow({.name = "Harbour Office", .number = "+442079460001", .contact = contact}), color);
    EXPECT_EQ(inRow({.name = "Harbour", .number = "0044 20 7946 0001"}), color);
}

TEST_F(PictureColour, isOfThePersonAndNotOfTheTextThatIsShown) {
    EXPECT_EQ(pictureTone(7, "+4930123456"), pictureTone(7, ""));
    EXPECT_EQ(pictureTone(0, "+493012345601"), pictureTone(-1, "030 12345601"));
    EXPECT_EQ(pictureTone(0, "Anna@Example.org"), pictureTone(0, "anna@example.org"));
    EXPECT_EQ(pictureTone(0, ""), pictureTone(-1, ""));
}

TEST_F(PictureColour, differsBetweenCallersWithoutAContact) {
    std::set<unsigned> tones;
    for (int i = 10; i < 40; ++i) tones.insert(pictureTone(-1, "+4930555100" + std::to_string(i)) % 6);
    EXPECT_EQ(tones.size(), 6u);
}

}  // namespace
}  // namespace addressbookui::test
