// Without the images of the product's application, the filters have names.
#include "platform/substrate.h"
#include "tests/screens/fixture.h"

namespace screens {
namespace {

objc::Object noImage(Class, objc::Object) { return {}; }

/// No image can be loaded while it is there.
class NoImages {
  public:
    NoImages() {
        hook(objc::selector<"imageWithContentsOfFile:">(), objc::implementation(&noImage), &ofFile_);
        hook(objc::selector<"imageNamed:">(), objc::implementation(&noImage), &named_);
    }
    ~NoImages() {
        IMP ignored = nullptr;
        hook(objc::selector<"imageWithContentsOfFile:">(), ofFile_, &ignored);
        hook(objc::selector<"imageNamed:">(), named_, &ignored);
    }
    NoImages(const NoImages&) = delete;
    NoImages& operator=(const NoImages&) = delete;

  private:
    static void hook(SEL name, IMP implementation, IMP* previous) {
        MSHookMessageEx(object_getClass(reinterpret_cast<id>(objc::raw(objc::classNamed<"UIImage">()))), name,
                        implementation, previous);
    }
    IMP ofFile_ = nullptr;
    IMP named_ = nullptr;
};

class MissingImagesTest : public ScreenTest {
  protected:
    /// The titles of the control's four segments.
    static std::vector<std::string> titlesOf(UISegmentedControl control) {
        std::vector<std::string> titles;
        for (NSUInteger i = 0; i < 4; ++i)
            titles.push_back(utf8(objc::send<"titleForSegmentAtIndex:", NSString>(control, i)));
        return titles;
    }
    UIViewController inFront() const { return objc::send<"topViewController", UIViewController>(navigation()); }
    std::vector<std::string> titlesInFront() const {
        return titlesOf(
            objc::send<"titleView", UISegmentedControl>(objc::send<"navigationItem", objc::Object>(inFront())));
    }
};

const std::vector<std::string> names = {"All", "Dialed", "Received", "Missed"};

TEST_F(MissingImagesTest, recentsAndAHistoryNameTheirFilters) {
    const NoImages none;
    fill({{"+4930100", noon}});
    start();
    EXPECT_EQ(titlesInFront(), names);
    objc::send<"tableView:accessoryButtonTappedForRowWithIndexPath:">(inFront(), objc::Object{}, rowPath(0));
    settle();
    objc::send<"detailsButotnClicked">(navigation().viewControllers().objectAtIndex(0));
    settle();
    EXPECT_EQ(stack().back(), "QVLogViewController");
    EXPECT_EQ(titlesInFront(), names);
}

TEST_F(MissingImagesTest, aDayNamesItsFiltersAndScopes) {
    const NoImages none;
    setSetting("isGroupByDate", "on");
    fill({{"+4930100", noon}});
    start();
    objc::send<"tableView:accessoryButtonTappedForRowWithIndexPath:">(inFront(), objc::Object{}, rowPath(0));
    settle();
    EXPECT_EQ(stack().back(), "QVDateLogViewController");
    EXPECT_EQ(titlesInFront(), names);
    auto day = inFront();
    auto scope = objc::send<"segmentControl:", UISegmentedControl>(day, day.searchDisplayController().searchBar());
    ASSERT_TRUE(scope);
    EXPECT_EQ(titlesOf(scope), names);
}

}  // namespace
}  // namespace screens
