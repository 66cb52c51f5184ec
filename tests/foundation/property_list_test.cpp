// Whatever is in a property list, it is a dictionary that can be read and written, or none.
#include "desktop/foundation/property_list.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using foundation::dictionaryInPropertyList;
using foundation::dictionaryInStringTable;

const std::string settings =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//GNUstep//DTD plist 0.9//EN\" \"http://www.gnustep.org/plist-0_9.xml\">\n"
    "<plist version=\"0.9\">\n<dict>\n    <key>isGroupByDate</key>\n    <true/>\n    <key>minRec_Call</key>\n"
    "    <integer>20</integer>\n</dict>\n</plist>\n";

class PropertyList : public testing::Test {
  protected:
    static objc::Object valueOf(objc::Object dictionary, const char* key) {
        return objc::send<"objectForKey:", objc::Object>(dictionary, foundation::propertyText(key));
    }
    const objc::AutoreleasePool pool_;
};

TEST_F(PropertyList, isReadAsXmlAndInTheOlderForm) {
    EXPECT_EQ((objc::send<"intValue", int>(valueOf(dictionaryInPropertyList(settings), "minRec_Call"))), 20);
    EXPECT_EQ((objc::send<"intValue", int>(valueOf(dictionaryInPropertyList("{ minRec_Call = 20; }"), "minRec_Call"))),
              20);
    const auto table = dictionaryInStringTable("/* a comment */\n\"KEY\" = \"a {brace} (and more\";\n");
    EXPECT_STREQ((objc::send<"UTF8String", const char*>(valueOf(table, "KEY"))), "a {brace} (and more");
}

TEST_F(PropertyList, withOneWrongByteAnywhereIsReadOrRefused) {
    for (std::size_t at = 0; at < settings.size(); ++at) {
        for (const char wrong : {'\x9d', '\0', '<', '>', '&', '{'}) {
            auto changed = settings;
            changed[at] = wrong;
            const auto list = dictionaryInPropertyList(changed);
            EXPECT_TRUE(!list || !foundation::xmlPropertyList(list).empty()) << at;
        }
    }
    EXPECT_FALSE(dictionaryInPropertyList("<plist><dict><\x9dkey>a</key></dict></plist>"));
}

TEST_F(PropertyList, thatIsNestedWithoutEndIsRefused) {
    constexpr std::size_t levels = 100'000;
    std::string arrays, dictionaries, elements;
    for (std::size_t i = 0; i < levels; ++i) {
        arrays += '(';
        dictionaries += "{a=";
        elements += "<array>";
    }
    EXPECT_FALSE(dictionaryInPropertyList("{a=" + arrays));
    EXPECT_FALSE(dictionaryInPropertyList(dictionaries));
    EXPECT_FALSE(dictionaryInPropertyList("<plist><dict><key>a</key>" + elements));
    EXPECT_FALSE(dictionaryInStringTable("a=" + arrays));
}

TEST_F(PropertyList, thatIsTooLongIsRefused) {
    EXPECT_FALSE(dictionaryInPropertyList("{a=b;}" + std::string(foundation::longestPropertyList, ' ')));
}

TEST_F(PropertyList, withTextsThatCannotBeWrittenIsRefused) {
    EXPECT_TRUE(dictionaryInPropertyList("{ a = \"\\U00e9\"; }"));
    EXPECT_FALSE(dictionaryInPropertyList("{ a = \"\\Ud800\"; }"));
    EXPECT_FALSE(dictionaryInPropertyList("{ a = (b, \"\\U0001\"); }"));
    EXPECT_FALSE(dictionaryInPropertyList("{ a = { (b) = c; }; }"));
}

TEST_F(PropertyList, ofAnotherKindOrFormIsRefused) {
    for (const std::string bytes : {"", " ", "text", "(a, b)", "<plist><array/></plist>", "bplist00\x01\x02",
                                    "<!DOCTYPE p [<!ENTITY a \"b\">]><plist><dict/></plist>",
                                    "<?xml version=\"1.0\" encoding=\"UTF-16\"?><plist><dict/></plist>"})
        EXPECT_FALSE(dictionaryInPropertyList(bytes)) << bytes;
}

}  // namespace
