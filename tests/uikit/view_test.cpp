// Places, sizes, autoresizing, the tree and its windows.
#include "desktop/uikit/view.h"

#include <rapidcheck.h>

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

class ViewTest : public ToolkitTest {};

TEST_F(ViewTest, aNewViewHasNoPlaceAndIsVisible) {
    const auto view = objc::Ref<View>::make();
    EXPECT_EQ(view->frame(), Rect{});
    EXPECT_EQ(view->alpha(), 1);
    EXPECT_FALSE(view->isHidden());
    EXPECT_TRUE(view->isUserInteractionEnabled());
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(view->window(), nullptr);
}

TEST_F(ViewTest, framesTravelThroughMessages) {
    const auto view = objc::Ref<View>::make();
    objc::send<"setFrame:">(view->object(), Rect{{1, 2}, {30, 40}});
    EXPECT_EQ((objc::send<"frame", Rect>(view->object())), (Rect{{1, 2}, {30, 40}}));
    EXPECT_EQ((objc::send<"bounds", Rect>(view->object())), (Rect{{0, 0}, {30, 40}}));
    EXPECT_EQ((objc::send<"center", Point>(view->object())), (Point{16, 22}));
    objc::send<"setCenter:">(view->object(), Point{100, 100});
    EXPECT_EQ(view->frame(), (Rect{{85, 80}, {30, 40}}));
}

TEST_F(ViewTest, boundsResizeAboutTheCentre) {
    const auto view = objc::Ref<View>::make<"initWithFrame:">(Rect{{10, 10}, {20, 20}});
    view->setBounds({{5, 7}, {40, 10}});
    EXPECT_EQ(view->frame(), (Rect{{0, 15}, {40, 10}}));
    EXPECT_EQ(view->bounds(), (Rect{{5, 7}, {40, 10}}));
}

struct Resizing {
    const char* name;
    unsigned long mask;
    Rect after;
};

class AutoresizingTest : public ToolkitTest, public testing::WithParamInterface<Resizing> {};

TEST_P(AutoresizingTest, theFlexiblePartsShareTheGrowthByTheirLengths) {
    const auto parent = objc::Ref<View>::make<"initWithFrame:">(Rect{{}, {100, 100}});
    const auto child = objc::Ref<View>::make<"initWithFrame:">(Rect{{20, 10}, {50, 60}});
    child->setAutoresizingMask(GetParam().mask);
    parent->addSubview(child);
    parent->setFrame({{}, {200, 160}});
    EXPECT_EQ(child->frame(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(Masks, AutoresizingTest,
                         testing::Values(Resizing{"none", 0, {{20, 10}, {50, 60}}},
                                         Resizing{"width", flexibleWidth, {{20, 10}, {150, 60}}},
                                         Resizing{"height", flexibleHeight, {{20, 10}, {50, 120}}},
                                         Resizing{"left", flexibleLeft, {{120, 10}, {50, 60}}},
                                         Resizing{"right", flexibleRight, {{20, 10}, {50, 60}}},
                                         Resizing{"top", flexibleTop, {{20, 70}, {50, 60}}},
                                         Resizing{"bottom", flexibleBottom, {{20, 10}, {50, 60}}},
                                         Resizing{"leftAndRight", flexibleLeft | flexibleRight, {{60, 10}, {50, 60}}},
                                         Resizing{"topAndBottom", flexibleTop | flexibleBottom, {{20, 25}, {50, 60}}},
                                         Resizing{"both", flexibleWidth | flexibleHeight, {{20, 10}, {150, 120}}},
                                         Resizing{"all", 63, {{40, 16}, {100, 96}}}),
                         [](const auto& each) { return each.param.name; });

TEST_F(ViewTest, partsOfNoLengthShareTheGrowthEqually) {
    const auto parent = objc::Ref<View>::make<"initWithFrame:">(Rect{{}, {0, 0}});
    const auto child = objc::Ref<View>::make<"initWithFrame:">(Rect{});
    child->setAutoresizingMask(flexibleLeft | flexibleRight);
    parent->addSubview(child);
    parent->setFrame({{}, {80, 80}});
    EXPECT_EQ(child->frame(), (Rect{{40, 0}, {0, 0}}));
}

TEST_F(ViewTest, growingASuperviewKeepsTheMarginsOfAStretchedChild) {
    EXPECT_TRUE(rc::check([](std::uint8_t left, std::uint8_t width, std::uint8_t right, std::uint8_t growth) {
        const objc::AutoreleasePool pool;
        const double before = 0.0 + left + width + right;
        const auto parent = objc::Ref<View>::make<"initWithFrame:">(Rect{{}, {before, 10}});
        const auto child = objc::Ref<View>::make<"initWithFrame:">(Rect{{1.0 * left, 0}, {1.0 * width, 10}});
        child->setAutoresizingMask(flexibleWidth);
        parent->addSubview(child);
        parent->setFrame({{}, {before + growth, 10}});
        RC_ASSERT(child->frame().left() == left);
        RC_ASSERT(parent->frame().width() - child->frame().right() == right);
    }));
}

TEST_F(ViewTest, subviewsAreOrderedFromBackToFront) {
    const auto parent = objc::Ref<View>::make();
    const auto a = objc::Ref<View>::make();
    const auto b = objc::Ref<View>::make();
    const auto c = objc::Ref<View>::make();
    a->setTag(1), b->setTag(2), c->setTag(3);
    auto order = [&] {
        std::vector<long> tags;
        for (const auto& each : parent->subviews()) tags.push_back(each->tag());
        return tags;
    };
    using Tags = std::vector<long>;
    parent->addSubview(a);
    parent->addSubview(b);
    parent->insertSubviewAtIndex(c, 1);
    EXPECT_EQ(order(), (Tags{1, 3, 2}));
    parent->bringSubviewToFront(a);
    EXPECT_EQ(order(), (Tags{3, 2, 1}));
    parent->sendSubviewToBack(b);
    EXPECT_EQ(order(), (Tags{2, 3, 1}));
    parent->insertSubviewAbove(b, c);
    EXPECT_EQ(order(), (Tags{3, 2, 1}));
    parent->insertSubviewBelow(a, c);
    EXPECT_EQ(order(), (Tags{1, 3, 2}));
    parent->insertSubviewAtIndex(a, 99);
    EXPECT_EQ(order(), (Tags{3, 2, 1}));
    EXPECT_EQ((objc::send<"count", unsigned long>(parent->subviewsArray())), 3u);
}

TEST_F(ViewTest, aViewMovesFromOneSuperviewToAnother) {
    const auto first = objc::Ref<View>::make();
    const auto second = objc::Ref<View>::make();
    const auto child = objc::Ref<View>::make();
    first->addSubview(child);
    second->addSubview(child);
    EXPECT_TRUE(first->subviews().empty());
    EXPECT_EQ(child->superview(), second.get());
}

TEST_F(ViewTest, aViewIsNeverPutIntoItself) {
    const auto parent = objc::Ref<View>::make();
    const auto child = objc::Ref<View>::make();
    parent->addSubview(child);
    child->addSubview(parent);
    parent->addSubview(parent);
    EXPECT_TRUE(child->subviews().empty());
    EXPECT_EQ(parent->subviews().size(), 1u);
}

TEST_F(ViewTest, viewWithTagFindsTheViewItselfThenTheDepthsInOrder) {
    const auto parent = objc::Ref<View>::make();
    const auto branch = objc::Ref<View>::make();
    const auto deep = objc::Ref<View>::make();
    const auto later = objc::Ref<View>::make();
    deep->setTag(7), later->setTag(7), parent->setTag(1);
    parent->addSubview(branch);
    branch->addSubview(deep);
    parent->addSubview(later);
    EXPECT_EQ(parent->viewWithTag(7), deep.get());
    EXPECT_EQ(parent->viewWithTag(1), parent.get());
    EXPECT_EQ(parent->viewWithTag(8), nullptr);
}

TEST_F(ViewTest, pointsAreConvertedThroughBoundsAndFrames) {
    const auto outer = add({{10, 20}, {100, 100}});
    const auto inner = objc::Ref<View>::make<"initWithFrame:">(Rect{{5, 5}, {50, 50}});
    outer->addSubview(inner);
    outer->setBoundsOrigin({0, 30});
    EXPECT_EQ(inner->convertPointToView({1, 1}, nullptr), (Point{16, -4}));
    EXPECT_EQ(inner->convertPointToView({1, 1}, outer), (Point{6, 6}));
    EXPECT_EQ(inner->convertPointFromView({6, 6}, outer), (Point{1, 1}));
    EXPECT_EQ(outer->convertRectFromView({{0, 0}, {2, 3}}, inner), (Rect{{5, 5}, {2, 3}}));
    EXPECT_EQ(inner->pointFromWindow({16, -4}), (Point{1, 1}));
}

class Witness : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"TestWitness"};
    static void define(objc::ClassDefinition<Witness>&) {}
    ~Witness() override { ++gone; }
    void windowChanged(Window* window) override { heard.push_back(window ? "came" : "left"); }
    void layoutSubviews() override { heard.push_back("layout"); }

    Names heard;
    static inline int gone = 0;
};

TEST_F(ViewTest, aTreeIsToldWhenItComesToAWindowAndLeaves) {
    const auto branch = objc::Ref<View>::make();
    const auto leaf = objc::Ref<Witness>::make();
    branch->addSubview(leaf);
    EXPECT_EQ(leaf->heard, Names{});
    window().addSubview(branch);
    EXPECT_EQ(leaf->window(), &window());
    branch->removeFromSuperview();
    EXPECT_EQ(leaf->heard, (Names{"came", "left"}));
    EXPECT_EQ(leaf->window(), nullptr);
}

TEST_F(ViewTest, layoutIsSentOnceAndOnlyWhereItIsNeeded) {
    const auto view = add<Witness>({{}, {10, 10}});
    view->heard.clear();
    window().layoutIfNeeded();
    window().layoutIfNeeded();
    EXPECT_EQ(view->heard, Names{"layout"});
    view->setFrame({{5, 5}, {10, 10}});
    window().layoutIfNeeded();
    EXPECT_EQ(view->heard, Names{"layout"}) << "a move alone needs no layout";
    view->setFrame({{5, 5}, {20, 10}});
    window().layoutIfNeeded();
    EXPECT_EQ(view->heard, (Names{"layout", "layout"}));
}

TEST_F(ViewTest, aReleasedTreeIsGoneWithAllItsViews) {
    Witness::gone = 0;
    {
        const objc::AutoreleasePool pool;
        const auto root = objc::Ref<Witness>::make();
        const auto branch = objc::Ref<Witness>::make();
        root->addSubview(branch);
        branch->addSubview(objc::Ref<Witness>::make());
        window().addSubview(root);
        root->removeFromSuperview();
    }
    EXPECT_EQ(Witness::gone, 3);
}

TEST_F(ViewTest, aViewOutlivesItsSuperviewWhereSomebodyHoldsIt) {
    const auto child = objc::Ref<View>::make();
    {
        const objc::AutoreleasePool pool;
        objc::Ref<View>::make()->addSubview(child);
    }
    EXPECT_EQ(child->superview(), nullptr);
}

TEST_F(ViewTest, theTintIsTheNearestAncestors) {
    const auto outer = add({{}, {10, 10}});
    const auto inner = objc::Ref<View>::make();
    outer->addSubview(inner);
    EXPECT_EQ(inner->tint(), Color::fromHex(0x03445F));
    outer->setTintColor(uiColor(Color::fromHex(0xFF0000)));
    EXPECT_EQ(inner->tint(), Color::fromHex(0xFF0000));
    EXPECT_EQ(colorOf(inner->tintColor()), Color::fromHex(0xFF0000));
}

}  // namespace
}  // namespace uikit::test
