// Method replacement: own methods, inherited ones, missing ones.
#include <gtest/gtest.h>

#include "desktop/substrate/substrate.h"
#include "fixtures/strings.h"

namespace {

using objc::Object;

struct Parent : objc::PeerBase {
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"HookTestParent"};
    static void define(objc::ClassDefinition<Parent>& definition) {
        definition.method<"inherited:", &Parent::inherited>();
        definition.method<"own:", &Parent::own>();
        definition.classMethod<"made", &Parent::made>();
    }
    int inherited(int value) { return value + 1; }
    int own(int value) { return value + 2; }
    static int made(Class) { return 5; }
};
struct Child : Parent {
    using Super = Parent;
    static constexpr objc::Name className{"HookTestChild"};
    static void define(objc::ClassDefinition<Child>& definition) { definition.method<"own:", &Child::own>(); }
    int own(int value) { return value + 3; }
};
struct Grandchild : Child {
    using Super = Child;
    static constexpr objc::Name className{"HookTestGrandchild"};
    static void define(objc::ClassDefinition<Grandchild>&) {}
};

IMP previous;

int replacement(id self, SEL name, int value) {
    auto host = reinterpret_cast<int (*)(id, SEL, int)>(reinterpret_cast<void (*)()>(previous));
    return host(self, name, value) * 100;
}
int plainReplacement(id, SEL) { return 6; }

template <class T, objc::Name name>
int answer(int value) {
    auto object = objc::Ref<T>::make();
    return objc::send<name, int>(object.self(), value);
}

TEST(Hook, oneTableOfAllCases) {
    objc::registerClasses<Parent, Child, Grandchild>();
    EXPECT_EQ((answer<Grandchild, "own:">(1)), 4) << "sent before, so that the runtime's tables are filled";

    previous = nullptr;
    MSHookMessageEx(objc::classOf<Child>(), objc::selector<"own:">(), objc::implementation(&replacement), &previous);
    EXPECT_EQ((answer<Child, "own:">(1)), 400) << "its own method is replaced";
    EXPECT_EQ((answer<Parent, "own:">(1)), 3) << "the superclass keeps its own";
    EXPECT_EQ((answer<Grandchild, "own:">(1)), 400) << "a subclass inherits the replacement";

    previous = nullptr;
    MSHookMessageEx(objc::classOf<Child>(), objc::selector<"inherited:">(), objc::implementation(&replacement),
                    &previous);
    EXPECT_EQ((answer<Child, "inherited:">(1)), 200) << "an inherited method is overridden";
    EXPECT_EQ((answer<Parent, "inherited:">(1)), 2) << "and the superclass's stays as it was";
    Method added = class_getInstanceMethod(objc::classOf<Child>(), objc::selector<"inherited:">());
    EXPECT_STREQ(method_getTypeEncoding(added), "i@:i") << "under the inherited type string";
}

TEST(Hook, aMissingMethodOrClassInstallsNothing) {
    objc::registerClasses<Parent>();
    IMP untouched = objc::implementation(&plainReplacement);
    IMP slot = untouched;
    MSHookMessageEx(objc::classOf<Parent>(), sel_registerName("hookTestMissing"), untouched, &slot);
    EXPECT_EQ(slot, untouched);
    EXPECT_FALSE(class_respondsToSelector(objc::classOf<Parent>(), sel_registerName("hookTestMissing")));
    MSHookMessageEx(nullptr, objc::selector<"own:">(), untouched, &slot);
    EXPECT_EQ(slot, untouched);
}

TEST(Hook, classMethodsAreReplacedThroughTheMetaclassAndNobodyNeedsThePrevious) {
    objc::registerClasses<Parent, Child>();
    MSHookMessageEx(object_getClass(objc::raw(objc::classOf<Child>())), objc::selector<"made">(),
                    objc::implementation(&plainReplacement), nullptr);
    EXPECT_EQ((objc::send<"made", int>(objc::classOf<Child>())), 6);
    EXPECT_EQ((objc::send<"made", int>(objc::classOf<Parent>())), 5);
}

}  // namespace
