// The contacts whom made-up calls are with: who is added, who is left, what the calls say.
#include "desktop/quorvel/generate/sample_contacts.h"

#include <gmock/gmock.h>

#include <set>

#include "desktop/addressbook/names.h"
#include "desktop/graphics/image_decoding.h"
#include "desktop/quorvel/generate/generate.h"
#include "desktop/quorvel/generate/people.h"
#include "fixture.h"

namespace contacts::test {
namespace {

using quorvel::SampleContacts;
using quorvel::store::NewCall;

class SampleContactsTest : public BookTest {
  protected:
    SampleContactsTest() { setLanguage("en"); }

    static SampleContacts addSamples() {
        auto added = SampleContacts::addTo(book());
        if (!added) throw std::runtime_error(added.error().message);
        return *std::move(added);
    }
    static std::vector<NewCall> namedCalls(const SampleContacts& samples) {
        std::vector<NewCall> calls;
        quorvel::generateCalls({.calls = 2000, .seed = 7, .until = 1700000000}, [&](NewCall call) {
            samples.name(call);
            calls.push_back(std::move(call));
            return true;
        });
        return calls;
    }
};

TEST_F(SampleContactsTest, everyCallOfAPersonNamesACardThatHasItsAddress) {
    const auto samples = addSamples();
    std::set<int> called;
    for (const NewCall& call : namedCalls(samples)) {
        if (call.contactId == quorvel::store::noContact) continue;
        called.insert(call.contactId);
        const auto contact = book().contact(call.contactId);
        ASSERT_TRUE(contact) << call.contactId;
        EXPECT_EQ(call.name, compositeName(*contact));
        EXPECT_EQ(owner(call.address), call.contactId);
    }
    EXPECT_EQ(called.size(), 13U);
    EXPECT_EQ(book().all()->size(), 13U);
}

TEST_F(SampleContactsTest, inANewBookTheRecordsAreThePlacesOfThePeople) {
    addSamples();
    int record = 0;
    for (const auto& person : quorvel::madeUpPeople()) {
        const auto contact = book().contact(++record);
        ASSERT_TRUE(contact);
        EXPECT_EQ(compositeName(*contact), nameOf(person));
        EXPECT_EQ(owner(person.address), record);
    }
}

TEST_F(SampleContactsTest, someHaveAPictureThatCanBeShown) {
    addSamples();
    std::vector<int> pictured;
    for (const Contact& contact : *book().all()) {
        const auto bytes = book().picture(contact.record);
        if (!bytes) continue;
        pictured.push_back(contact.record);
        const auto image = graphics::decodeImage(*bytes, 192);
        ASSERT_TRUE(image) << contact.record;
        EXPECT_EQ((*image).pixelWidth(), 192);
    }
    EXPECT_THAT(pictured, testing::ElementsAre(1, 2, 4, 6, 9, 10));
}

TEST_F(SampleContactsTest, addedTwiceTheyAreThereOnce) {
    addSamples();
    addSamples();
    EXPECT_EQ(book().all()->size(), 13U);
}

TEST_F(SampleContactsTest, contactsThatAreThereStayAndKeepTheirCalls) {
    Contact annie = person("Annie", {"030 12345601"});
    annie.lists[Property::phone][0].label = "_$!<Main>!$_";
    setHomeRegion("DE");
    add({person("Somebody", {"555"}), annie});
    const auto before = *book().all();
    const auto samples = addSamples();
    EXPECT_EQ(book().all()->size(), 14U);
    EXPECT_EQ(book().contact(1), before[0]);
    EXPECT_EQ(book().contact(2), before[1]);
    for (const NewCall& call : namedCalls(samples)) {
        EXPECT_NE(call.contactId, 1);
        if (call.address != "+493012345601") continue;
        EXPECT_EQ(call.contactId, 2);
        EXPECT_EQ(call.name, "Annie");
        EXPECT_EQ(call.label, "main");
    }
}

TEST_F(SampleContactsTest, labelsOfCallsAreTheSameInEveryLanguage) {
    setLanguage("de");
    const auto samples = addSamples();
    for (const NewCall& call : namedCalls(samples)) {
        if (call.name == "Anna Berg") {
            EXPECT_EQ(call.label, "mobile");
        }
    }
}

}  // namespace
}  // namespace contacts::test
