// Classes made of C++ types.
#include <gtest/gtest.h>

#include <vector>

#include "fixtures/strings.h"

namespace {

using objc::Object;

std::vector<std::string> events;

class Animal : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"PeerTestAnimal"};
    static void define(objc::ClassDefinition<Animal>& definition) {
        definition.method<"sound", &Animal::sound>();
        definition.method<"legs", &Animal::legs>();
        definition.method<"describe", &Animal::describe>();
        definition.classMethod<"kingdom", &Animal::kingdom>();
    }
    virtual ~Animal() { events.push_back("~Animal"); }
    virtual int legs() const { return 4; }
    Object sound() { return stringOf("..."); }
    void describe() { events.push_back("Animal describes"); }
    static Object kingdom(Class) { return stringOf("animals"); }
};

class Dog : public Animal {
  public:
    using Super = Animal;
    static constexpr objc::Name className{"PeerTestDog"};
    static void define(objc::ClassDefinition<Dog>& definition) {
        definition.method<"sound", &Dog::sound>();
        definition.method<"describe", &Dog::describe>();
    }
    ~Dog() override { events.push_back("~Dog"); }
    Object sound() { return stringOf("woof"); }
    // The classic loop: a super send that starts at the receiver's class never ends in a subclass.
    void describe() {
        events.push_back("Dog describes");
        objc::sendSuper<"describe">(Object{self}, objc::classOf<Dog>());
    }
};

/// A class of another image over a class that it knows by name alone, with a peer of its own.
class Collar : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"PeerTestDog">;
    static constexpr objc::Name className{"PeerTestCollaredDog"};
    static void define(objc::ClassDefinition<Collar>& definition) {
        definition.method<"tag", &Collar::tag>();
        definition.method<"sound", &Collar::sound>();
    }
    ~Collar() { events.push_back("~Collar"); }
    int tag() const { return 7; }
    Object sound() { return objc::sendSuper<"sound", Object>(Object{self}, objc::classOf<Collar>()); }
};

/// One peer as two images know it.
struct Twin : objc::PeerBase {
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"PeerTestTwin"};
    static void define(objc::ClassDefinition<Twin>&) {}
};
struct OtherTwin : objc::PeerBase {
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"PeerTestTwin"};
    static void define(objc::ClassDefinition<OtherTwin>&) {}
};

struct Orphan : objc::PeerBase {
    using Super = objc::Foreign<"PeerTestNoSuchClass">;
    static constexpr objc::Name className{"PeerTestOrphan"};
    static void define(objc::ClassDefinition<Orphan>&) {}
};

class Peer : public ::testing::Test {
  protected:
    Peer() { objc::registerClasses<Animal, Dog, Collar>(); }
    void SetUp() override { events.clear(); }
    objc::AutoreleasePool pool_;
};

TEST_F(Peer, anObjectHasItsPeerFromAllocToDealloc) {
    {
        auto animal = objc::make<Object>(objc::classOf<Animal>());
        ASSERT_NE(objc::peerOf<Animal>(animal.get()), nullptr);
        EXPECT_EQ(objc::peerOf<Animal>(animal.get())->self, animal.self());
        EXPECT_EQ((objc::send<"legs", int>(animal)), 4);
        EXPECT_EQ(textOf(objc::send<"sound", Object>(animal)), "...");
    }
    EXPECT_EQ(events, (std::vector<std::string>{"~Animal"}));
}

TEST_F(Peer, aSubclassOverridesAndBothHalvesAreDestroyedOnce) {
    {
        auto dog = objc::Ref<Dog>::make();
        EXPECT_EQ(textOf(objc::send<"sound", Object>(dog.self())), "woof");
        EXPECT_EQ((objc::send<"legs", int>(dog.self())), 4);
    }
    EXPECT_EQ(events, (std::vector<std::string>{"~Dog", "~Animal"}));
}

TEST_F(Peer, classMethodsAreInherited) {
    EXPECT_EQ(textOf(objc::send<"kingdom", Object>(objc::classOf<Dog>())), "animals");
}

TEST_F(Peer, peerIfAnswersNullForAnotherClass) {
    auto animal = objc::Ref<Animal>::make();
    EXPECT_EQ(objc::peerIf<Dog>(Object{animal.self()}), nullptr);
    EXPECT_EQ(objc::peerIf<Animal>(Object{animal.self()}), animal.get());
    EXPECT_EQ(objc::peerIf<Animal>(Object{}), nullptr);
    EXPECT_EQ(objc::peerOf<Animal>(Object{}), nullptr);
}

TEST_F(Peer, aClassMadeAtRunTimeHasThePeerOfItsSuperclass) {
    Class made = objc_allocateClassPair(objc::classOf<Dog>(), "PeerTestRunTimeDog", 0);
    ASSERT_NE(made, nullptr);
    objc_registerClassPair(made);
    {
        auto dog = objc::make<Object>(made);
        EXPECT_EQ(object_getClass(dog.self()), made);
        ASSERT_NE(objc::peerIf<Dog>(dog.get()), nullptr);
        EXPECT_EQ(textOf(objc::send<"sound", Object>(dog)), "woof");
    }
    EXPECT_EQ(events, (std::vector<std::string>{"~Dog", "~Animal"}));
}

TEST_F(Peer, aSuperSendInASubclassReachesTheSuperclassOnce) {
    Class made = objc_allocateClassPair(objc::classOf<Dog>(), "PeerTestDeepDog", 0);
    ASSERT_NE(made, nullptr);
    objc_registerClassPair(made);
    auto dog = objc::make<Object>(made);
    objc::send<"describe">(dog);
    EXPECT_EQ(events, (std::vector<std::string>{"Dog describes", "Animal describes"}));
}

TEST_F(Peer, aSecondRootOverAPeerClassHasBothPeers) {
    {
        auto dog = objc::make<Object>(objc::classOf<Collar>());
        ASSERT_NE(objc::peerOf<Collar>(dog.get()), nullptr);
        ASSERT_NE(objc::peerOf<Dog>(dog.get()), nullptr);
        EXPECT_NE(static_cast<void*>(objc::peerOf<Collar>(dog.get())),
                  static_cast<void*>(objc::peerOf<Dog>(dog.get())));
        EXPECT_EQ((objc::send<"tag", int>(dog)), 7);
        EXPECT_EQ(textOf(objc::send<"sound", Object>(dog)), "woof");
    }
    EXPECT_EQ(events, (std::vector<std::string>{"~Collar", "~Dog", "~Animal"}));
}

TEST_F(Peer, aMissingSuperclassMakesNoClass) {
    EXPECT_EQ(objc::classOf<Orphan>(), nullptr);
    EXPECT_EQ(objc_getClass("PeerTestOrphan"), nullptr);
}

TEST_F(Peer, aClassThatAnotherImageRegisteredGivesThePeerAllTheSame) {
    auto twin = objc::Ref<Twin>::make();
    EXPECT_EQ(objc::classOf<OtherTwin>(), objc::classOf<Twin>());
    EXPECT_EQ(static_cast<void*>(objc::peerOf<OtherTwin>(twin.self())), static_cast<void*>(twin.get()));
}

int addedMethod(Object, int value) { return value + 1; }

TEST_F(Peer, addingAMethodKeepsTheClasssOwn) {
    EXPECT_TRUE((objc::addMethod<"addedAfterwards:", &addedMethod>(objc::classOf<Animal>())));
    EXPECT_FALSE((objc::addMethod<"addedAfterwards:", &addedMethod>(objc::classOf<Animal>())));
    auto dog = objc::Ref<Dog>::make();
    EXPECT_EQ((objc::send<"addedAfterwards:", int>(dog.self(), 4)), 5);
}

}  // namespace
