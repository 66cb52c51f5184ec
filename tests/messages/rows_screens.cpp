// The screens, and the fixture.
#include "tests/messages/rows_screens.h"

#include <stdexcept>

#include "desktop/substrate/substrate.h"
#include "desktop/substrate/trace.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/table_view_controller.h"
#include "tests/plugin_image.h"

namespace rowsmessages {
namespace {

/// The host's Recents screen: it says what it is asked.
class Recents : public uikit::ViewController {
  public:
    using Super = uikit::ViewController;
    static constexpr objc::Name className{"PHRecentsViewController"};

    void select(objc::Object, objc::Object) { events().push_back("host didSelectRow"); }
    void accessory(objc::Object, objc::Object) { events().push_back("host accessoryButtonTapped"); }
    objc::Object callAt(objc::Object index) {
        events().push_back("host callAtTableViewIndex");
        return index;
    }
    long rows(objc::Object, long) { return 0; }

    static void define(objc::ClassDefinition<Recents>& definition) {
        definition.method<"tableView:didSelectRowAtIndexPath:", &Recents::select>()
            .method<"tableView:accessoryButtonTappedForRowWithIndexPath:", &Recents::accessory>()
            .method<"callAtTableViewIndex:", &Recents::callAt>()
            .method<"tableView:numberOfRowsInSection:", &Recents::rows>();
    }
};

/// A screen that keeps what it was given; what else it is sent is read on the trace.
class Card : public uikit::ViewController {
  public:
    objc::Object header() { return header_.get(); }
    void setHeader(objc::Object view) { header_ = objc::Strong<>(view); }
    objc::Object person() { return person_.get(); }
    void setPerson(objc::Object person) { person_ = objc::Strong<>(person); }
    objc::Object delegate() { return delegate_; }
    void setDelegate(objc::Object delegate) { delegate_ = delegate; }
    void takeFlag(bool) {}
    void takeNumber(int) {}
    void takeObject(objc::Object) {}

  private:
    objc::Strong<> header_;
    objc::Strong<> person_;
    objc::Object delegate_;
};

class PersonCard : public Card {
  public:
    using Super = uikit::ViewController;
    static constexpr objc::Name className{"ABPersonViewController_Modern"};

    objc::Object make(objc::Object, objc::Object, objc::Object, long) { return objc::Object{self}; }
    void highlight(int, int) {}
    void highlightImportant(int, int, bool) {}

    static void define(objc::ClassDefinition<PersonCard>& definition) {
        definition.method<"initWithNibName:bundle:addressBook:style:", &PersonCard::make>()
            .method<"personHeaderView", &PersonCard::header>()
            .method<"setPersonHeaderView:", &PersonCard::setHeader>()
            .method<"displayedPerson", &PersonCard::person>()
            .method<"setDisplayedPerson:", &PersonCard::setPerson>()
            .method<"personViewDelegate", &PersonCard::delegate>()
            .method<"setPersonViewDelegate:", &PersonCard::setDelegate>()
            .method<"setAddressBook:", &PersonCard::takeObject>()
            .method<"setAllowsEditing:", &PersonCard::takeFlag>()
            .method<"setAllowsActions:", &PersonCard::takeFlag>()
            .method<"setAllowsSharing:", &PersonCard::takeFlag>()
            .method<"setShouldShowLinkedPeople:", &PersonCard::takeFlag>()
            .method<"setAllowsContactBlocking:", &PersonCard::takeFlag>()
            .method<"setAllowsDeletion:", &PersonCard::takeFlag>()
            .method<"setAllowsAddToFavorites:", &PersonCard::takeFlag>()
            .method<"setAllowsCancel:", &PersonCard::takeFlag>()
            .method<"setHighlightedItemForProperty:withIdentifier:", &PersonCard::highlight>()
            .method<"setHighlightedItemForProperty:withIdentifier:important:", &PersonCard::highlightImportant>();
    }
};

class UnknownPersonCard : public Card {
  public:
    using Super = uikit::ViewController;
    static constexpr objc::Name className{"ABUnknownPersonViewController_Modern"};

    static void define(objc::ClassDefinition<UnknownPersonCard>& definition) {
        definition.method<"personHeaderView", &UnknownPersonCard::header>()
            .method<"setPersonHeaderView:", &UnknownPersonCard::setHeader>()
            .method<"displayedPerson", &UnknownPersonCard::person>()
            .method<"setDisplayedPerson:", &UnknownPersonCard::setPerson>()
            .method<"unknownPersonViewDelegate", &UnknownPersonCard::delegate>()
            .method<"setUnknownPersonViewDelegate:", &UnknownPersonCard::setDelegate>()
            .method<"setPrimaryProperty:", &UnknownPersonCard::takeNumber>()
            .method<"setAlternateName:", &UnknownPersonCard::takeObject>()
            .method<"setMessage:", &UnknownPersonCard::takeObject>()
            .method<"setAllowsSharing:", &UnknownPersonCard::takeFlag>()
            .method<"setAllowsActions:", &UnknownPersonCard::takeFlag>()
            .method<"setAllowsSendingTextMessage:", &UnknownPersonCard::takeFlag>()
            .method<"setAllowsContactBlocking:", &UnknownPersonCard::takeFlag>()
            .method<"setAllowsOnlyPhoneActions:", &UnknownPersonCard::takeFlag>();
    }
};

class Header : public uikit::View {
  public:
    using Super = uikit::View;
    static constexpr objc::Name className{"QVRecentsPersonPhoneHeaderView"};
    objc::Object records() { return records_.get(); }
    void setRecords(objc::Object records) { records_ = objc::Strong<>(records); }
    objc::Object delegate() { return delegate_; }
    void setDelegate(objc::Object delegate) { delegate_ = delegate; }
    static void define(objc::ClassDefinition<Header>& definition) {
        definition.method<"callRecords", &Header::records>()
            .method<"setCallRecords:", &Header::setRecords>()
            .method<"delegate", &Header::delegate>()
            .method<"setDelegate:", &Header::setDelegate>();
    }

  private:
    objc::Strong<> records_;
    objc::Object delegate_;
};

/// What the plug-in's own screens are made from.
class Base : public uikit::TableViewController {
  public:
    using Super = uikit::TableViewController;
    static constexpr objc::Name className{"QVBaseTableViewController"};
    static void define(objc::ClassDefinition<Base>&) {}
};

void registerAll() {
    registerCompanion();
    registerAddressBook();
    objc::registerClasses<Recents, PersonCard, UnknownPersonCard, Header, Base>();
    if (const auto error = substrate::loadPlugin(pluginImage())) throw std::runtime_error(*error);
}

/// The selector and the arguments of a traced line where they set something up; empty for the rest.
std::string setUp(const std::string& line) {
    const auto start = line.find(' ') + 1;
    const auto end = line.find(']');
    const std::string selector = line.substr(start, end - start);
    const bool isOfInterest = selector.starts_with("set") || selector.starts_with("push") ||
                              selector.starts_with("initWith") || selector == "init";
    if (!isOfInterest || selector == "setNeedsLayout" || selector == "setNeedsDisplay") return {};
    const bool isHeader = line.find("HeaderView ") < start;
    return (isHeader ? "header " : "") + selector + line.substr(end + 1);
}

}  // namespace

void RowsMessages::SetUp() {
    static const bool once = (registerAll(), true);
    ASSERT_TRUE(once);
    resetCompanion();
    resetAddressBook();
    screen_ = objc::make<PHRecentsViewController>(objc::classNamed<"PHRecentsViewController">());
    navigation_ = objc::make<UINavigationController, "initWithRootViewController:">(
        objc::classNamed<"UINavigationController">(), screen_.get());
    table_ = objc::make<UITableView, "initWithFrame:">(objc::classNamed<"UITableView">(), CGRect{});
    uikit::Application::shared()->setUrlOpener([this](const std::string& address) {
        addresses_.push_back(address);
        return true;
    });
}

void RowsMessages::TearDown() {
    substrate::trace::end();
    runHeldWork();
    uikit::Application::shared()->setUrlOpener({});
}

void RowsMessages::load(const std::vector<Call>& calls) {
    auto list = NSMutableArray::make();
    for (const auto& call : calls) list->addObject(entryOf(call).get());
    companion().calls = list;
    send<"initializeCallList">();
    events().clear();
}

NSIndexPath RowsMessages::path(long row) {
    return objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", NSIndexPath>(row, 0L);
}

std::vector<std::string> RowsMessages::opened() const {
    std::vector<std::string> names;
    auto controllers = navigation().viewControllers();
    for (NSUInteger i = 1; i < controllers.count(); ++i)
        names.push_back(class_getName(object_getClass(controllers.objectAtIndex(i).self)));
    return names;
}

UIViewController RowsMessages::top() const {
    auto controllers = navigation().viewControllers();
    return controllers.objectAtIndex<UIViewController>(controllers.count() - 1);
}

void RowsMessages::traceCards() {
    const auto error = substrate::trace::begin(
        {"ABPersonViewController_Modern", "ABUnknownPersonViewController_Modern", "QVRecentsPersonPhoneHeaderView",
         "UINavigationController"},
        [](const std::string& line) {
            const std::string event = setUp(line);
            if (!event.empty()) events().push_back(event);
        },
        substrate::trace::Ownership::leftOut);
    ASSERT_FALSE(error) << *error;
    events().clear();
}

NSArray RowsMessages::recordsAbove(ABContactScreen card) {
    return objc::as<NSArray>(ask<"callRecords">(card.personHeaderView()));
}

}  // namespace rowsmessages
