// The message trace, line by line.
#include "desktop/substrate/trace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>

#include "desktop/substrate/substrate.h"
#include "fixtures/strings.h"
#include "fixtures/threads.h"

namespace {

struct Point {
    double x, y;
};
struct Rect {
    Point origin, size;
};
struct Span {
    unsigned long location, length;
};

}  // namespace

template <>
struct objc::Encoding<Point> {
    static constexpr Name text{"{CGPoint=dd}"};
};
template <>
struct objc::Encoding<Rect> {
    static constexpr Name text{"{CGRect={CGPoint=dd}{CGSize=dd}}"};
};
template <>
struct objc::Encoding<Span> {
    static constexpr Name text{"{_NSRange=QQ}"};
};

namespace {

using objc::Object;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace trace = substrate::trace;

class Screen : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TraceTestScreen"};
    static void define(objc::ClassDefinition<Screen>& definition) {
        definition.method<"show", &Screen::show>();
        definition.method<"title:", &Screen::title>();
        definition.method<"flag:count:", &Screen::flag>();
        definition.method<"place:", &Screen::place>();
        definition.method<"move:by:", &Screen::move>();
        definition.method<"frameAt:", &Screen::frameAt>();
        definition.method<"sum:b:c:d:e:f:g:h:", &Screen::sum>();
        definition.method<"blend:with:", &Screen::blend>();
        definition.method<"range:of:", &Screen::range>();
        definition.method<"act:on:", &Screen::act>();
        definition.classMethod<"open:", &Screen::open>();
    }
    void show() {}
    Object title(Object text) { return text; }
    void flag(bool, long) {}
    void place(Rect) {}
    double move(Point point, double by) { return point.x + by; }
    Rect frameAt(long row) { return {{1, 2}, {3, static_cast<double>(row)}}; }
    long sum(int a, long b, short c, unsigned char d, unsigned e, unsigned long f, long g, int h) {
        return a + b + c + d + static_cast<long>(e) + static_cast<long>(f) + g + h;
    }
    float blend(float a, double b) { return a + static_cast<float>(b); }
    void range(Span, Object) {}
    void act(SEL, Class) {}
    static int open(Class, int value) { return value + 1; }
};
class Subscreen : public Screen {
  public:
    using Super = Screen;
    static constexpr objc::Name className{"TraceTestSubscreen"};
    static void define(objc::ClassDefinition<Subscreen>& definition) { definition.method<"show", &Subscreen::show>(); }
    void show() { objc::sendSuper<"show">(Object{self}, objc::classOf<Subscreen>()); }
};

class Trace : public ::testing::Test {
  protected:
    Trace() {
        objc::registerClasses<Screen, Subscreen, Tracked>();
        screen_ = objc::Ref<Screen>::make();
    }
    ~Trace() override { trace::end(); }
    void begin(const std::vector<std::string>& classes, trace::Ownership ownership = trace::Ownership::leftOut) {
        auto error = trace::begin(
            classes, [this](const std::string& line) { lines_.push_back(line); }, ownership);
        ASSERT_EQ(error, std::nullopt);
    }
    id screen() const { return screen_.self(); }

    objc::AutoreleasePool pool_;
    std::vector<std::string> lines_;
    objc::Ref<Screen> screen_;
};

TEST_F(Trace, everyMessageIsALineWithItsArguments) {
    begin({"TraceTestScreen"});
    objc::send<"show">(screen());
    EXPECT_EQ(textOf(objc::send<"title:", Object>(screen(), stringOf("Re\"cents\"\n"))), "Re\"cents\"\n");
    objc::send<"title:", Object>(screen(), Object{});
    objc::send<"title:", Object>(screen(), numberOf(12));
    objc::send<"title:", Object>(screen(), makeTracked(1).get());
    objc::send<"title:", Object>(screen(), Object{objc::raw(objc::classOf<Tracked>())});
    objc::send<"flag:count:">(screen(), true, -3l);
    objc::send<"flag:count:">(screen(), false, 3l);
    objc::send<"place:">(screen(), Rect{{1, 2.5}, {320, 44}});
    EXPECT_EQ((objc::send<"move:by:", double>(screen(), Point{1, 2}, 0.25)), 1.25);
    EXPECT_EQ((objc::send<"blend:with:", float>(screen(), 1.5f, 2.0)), 3.5f);
    objc::send<"range:of:">(screen(), Span{4, 5}, stringOf("x"));
    objc::send<"act:on:">(screen(), objc::selector<"viewDidLoad">(), objc::classOf<Screen>());
    EXPECT_THAT(lines_, ElementsAre("-[TraceTestScreen show]",                           //
                                    "-[TraceTestScreen title:] \"Re\\\"cents\\\"\\n\"",  //
                                    "-[TraceTestScreen title:] nil",                     //
                                    "-[TraceTestScreen title:] 12",                      //
                                    "-[TraceTestScreen title:] <LayerTestTracked>",      //
                                    "-[TraceTestScreen title:] LayerTestTracked",        //
                                    "-[TraceTestScreen flag:count:] YES -3",             //
                                    "-[TraceTestScreen flag:count:] NO 3",               //
                                    "-[TraceTestScreen place:] {{1, 2.5}, {320, 44}}",   //
                                    "-[TraceTestScreen move:by:] {1, 2} 0.25",           //
                                    "-[TraceTestScreen blend:with:] 1.5 2",              //
                                    "-[TraceTestScreen range:of:] {4, 5} \"x\"",         //
                                    "-[TraceTestScreen act:on:] viewDidLoad TraceTestScreen"));
}

TEST_F(Trace, argumentsOnTheStackAndStructuresInMemoryArriveUnharmed) {
    begin({"TraceTestScreen"});
    EXPECT_EQ((objc::send<"sum:b:c:d:e:f:g:h:", long>(screen(), -1, 2l, static_cast<short>(3),
                                                      static_cast<unsigned char>(4), 5u, 6ul, -7l, 8)),
              20);
    Rect frame = objc::send<"frameAt:", Rect>(screen(), 9l);
    EXPECT_EQ(frame.origin.y, 2);
    EXPECT_EQ(frame.size.y, 9);
    EXPECT_THAT(lines_, ElementsAre("-[TraceTestScreen sum:b:c:d:e:f:g:h:] -1 2 3 4 5 6 -7 8",
                                    "-[TraceTestScreen frameAt:] 9"));
}

TEST_F(Trace, theClassItselfAndItsSubclassesAreTracedUnderTheirOwnNames) {
    auto subscreen = objc::Ref<Subscreen>::make();
    begin({"TraceTestScreen"});
    EXPECT_EQ((objc::send<"open:", int>(objc::classOf<Screen>(), 4)), 5);
    EXPECT_EQ((objc::send<"open:", int>(objc::classOf<Subscreen>(), 5)), 6);
    objc::send<"show">(subscreen.self());
    EXPECT_THAT(lines_, ElementsAre("+[TraceTestScreen open:] 4", "+[TraceTestSubscreen open:] 5",
                                    "-[TraceTestSubscreen show]"))
        << "and the super send makes no line";
}

TEST_F(Trace, otherClassesAndTheSuperclassAreSilent) {
    begin({"TraceTestSubscreen"});
    objc::send<"show">(screen());
    objc::send<"value", int>(makeTracked(1).get());
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Trace, afterTheEndThereIsSilence) {
    begin({"TraceTestScreen"});
    IMP kept = objc_msg_lookup(screen(), objc::selector<"show">());
    trace::end();
    objc::send<"show">(screen());
    reinterpret_cast<void (*)(id, SEL)>(reinterpret_cast<void (*)()>(kept))(screen(), objc::selector<"show">());
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Trace, performSelectorAndNotificationsAreSeen) {
    begin({"TraceTestScreen"});
    objc::send<"performSelector:withObject:", Object>(screen(), objc::selector<"title:">(), stringOf("x"));
    EXPECT_THAT(lines_, Contains("-[TraceTestScreen title:] \"x\""));
    lines_.clear();
    Object center = objc::sendClass<"NSNotificationCenter", "defaultCenter", Object>();
    objc::send<"addObserver:selector:name:object:">(center, Object{screen()}, objc::selector<"title:">(),
                                                    stringOf("TraceTestName"), Object{});
    objc::send<"postNotificationName:object:">(center, stringOf("TraceTestName"), Object{});
    objc::send<"removeObserver:">(center, Object{screen()});
    EXPECT_THAT(lines_, Contains(HasSubstr("-[TraceTestScreen title:] <")));
}

TEST_F(Trace, ownershipIsShownOnRequest) {
    begin({"TraceTestScreen"}, trace::Ownership::shown);
    objc::send<"retain", Object>(screen());
    objc::send<"release">(screen());
    EXPECT_THAT(lines_, ElementsAre("-[TraceTestScreen retain]", "-[TraceTestScreen release]"));
}

TEST_F(Trace, aClassThatIsNotThereIsAnErrorAndTheOldTraceGoesOn) {
    begin({"TraceTestScreen"});
    auto error = trace::begin({"TraceTestScreen", "TraceTestNone"}, [](const std::string&) {});
    EXPECT_EQ(error, "there is no class \"TraceTestNone\" to trace; name one that is loaded");
    objc::send<"show">(screen());
    EXPECT_THAT(lines_, ElementsAre("-[TraceTestScreen show]"));
}

TEST_F(Trace, aMessageThatTheSinkSendsIsNotTraced) {
    int calls = 0;
    ASSERT_EQ(trace::begin(
                  {"TraceTestScreen"},
                  [&](const std::string&) {
                      ++calls;
                      objc::send<"show">(screen());
                  },
                  trace::Ownership::leftOut),
              std::nullopt);
    objc::send<"show">(screen());
    EXPECT_EQ(calls, 1);
}

void hide(id, SEL, BOOL, double) {}
void update(id, SEL, id, long) {}
id header(id, SEL, id, long) { return nullptr; }

TEST_F(Trace, aPluginsOwnTypeStringsAreRead) {
    Class cls = objc::classOf<Screen>();
    class_addMethod(cls, sel_registerName("updateList:mode:"), objc::implementation(&update), "v@:@@:@i");
    class_addMethod(cls, sel_registerName("tableView:titleForHeaderInSection:"), objc::implementation(&header),
                    "v@:i@");
    class_addMethod(cls, sel_registerName("hide:afterDelay:"), objc::implementation(&hide), "v@:@i");
    trace::describe("hide:afterDelay:", "v@:Cd");
    begin({"TraceTestScreen"});
    objc::send<"updateList:mode:">(screen(), stringOf("calls"), 3l);
    objc::send<"tableView:titleForHeaderInSection:", Object>(screen(), makeTracked(1).get(), 1l);
    objc::send<"hide:afterDelay:">(screen(), true, 2.5);
    EXPECT_THAT(lines_, ElementsAre("-[TraceTestScreen updateList:mode:] \"calls\" 3",
                                    "-[TraceTestScreen tableView:titleForHeaderInSection:] <LayerTestTracked> 1",
                                    "-[TraceTestScreen hide:afterDelay:] YES 2.5"));
}

TEST_F(Trace, aReplacedMethodIsOneLine) {
    static IMP previous;
    struct Hook {
        static void show(id self, SEL name) {
            reinterpret_cast<void (*)(id, SEL)>(reinterpret_cast<void (*)()>(previous))(self, name);
        }
    };
    begin({"TraceTestScreen"});
    MSHookMessageEx(objc::classOf<Subscreen>(), objc::selector<"show">(), objc::implementation(&Hook::show), &previous);
    auto subscreen = objc::Ref<Subscreen>::make();
    lines_.clear();
    objc::send<"show">(subscreen.self());
    EXPECT_THAT(lines_, ElementsAre("-[TraceTestSubscreen show]"));
}

TEST_F(Trace, manyThreadsMakeWholeLinesWhileTheTraceComesAndGoes) {
    std::mutex mutex;
    std::size_t bad = 0;
    onThreads(4, [&](int thread) {
        for (int round = 0; round < 300; ++round) {
            objc::AutoreleasePool pool;
            if (thread == 0) {
                trace::begin({"TraceTestScreen"}, [&](const std::string& line) {
                    std::lock_guard lock(mutex);
                    if (line.find("-[TraceTestScreen flag:count:] YES ") != 0) ++bad;
                });
                if (round % 2 == 0) trace::end();
            } else {
                objc::send<"flag:count:">(screen(), true, static_cast<long>(round));
            }
        }
    });
    EXPECT_EQ(bad, 0u);
}

}  // namespace
