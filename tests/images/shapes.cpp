// One call of each shape, from this image into the receiver and back: compiled into the test as it is, and into an
// image of the handset's platform. What arrives and what comes back has to be the same in both.
#include "platform/coregraphics.h"
#include "platform/foundation.h"

#if !defined(SHAPES_CLASS)
#define SHAPES_CLASS "ShapesOfImage"
#endif

extern "C" {
/// Calls with a variable tail and with a declared list of arguments, alone in their functions so that their code can be
/// looked at.
__attribute__((visibility("default"))) id variadicCall(id receiver, long number, double fraction) {
    return objc::sendVariadic<"format:", objc::Object>(objc::Object{receiver}, text<"%ld %.2f %s">(), number, fraction,
                                                       "tail")
        .self;
}
__attribute__((visibility("default"))) id declaredCall(id receiver, long number, double fraction) {
    return objc::send<"number:fraction:", objc::Object>(receiver, number, fraction).self;
}
}

namespace {

class Shapes : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{SHAPES_CLASS};
    static void define(objc::ClassDefinition<Shapes>& definition) {
        definition.method<"callAll:", &Shapes::callAll>()
            .method<"point:size:rect:", &Shapes::takeGeometry>()
            .method<"flag:small:wide:", &Shapes::takeIntegers>()
            .method<"single:double:", &Shapes::takeFractions>()
            .method<"scaled:by:", &Shapes::scaled>();
    }

    /// Sends one message of each shape, each with what the one before answered.
    void callAll(objc::Object receiver) {
        const auto point = objc::send<"point", CGPoint>(receiver);
        const auto size = objc::send<"size", CGSize>(receiver);
        const auto rect = objc::send<"rect", CGRect>(receiver);
        objc::send<"takePoint:size:rect:">(receiver, point, size, rect);
        const bool yes = objc::send<"yes", bool>(receiver);
        const bool no = objc::send<"no", bool>(receiver);
        objc::send<"takeFlag:other:">(receiver, yes, no);
        objc::send<"takeSmall:wide:unsigned:">(receiver, objc::send<"small", int>(receiver),
                                               objc::send<"wide", std::int64_t>(receiver),
                                               objc::send<"natural", unsigned long>(receiver));
        objc::send<"takeSingle:double:">(receiver, objc::send<"single", float>(receiver),
                                         objc::send<"double", double>(receiver));
        // More arguments than registers, of both kinds.
        objc::send<"a:b:c:d:e:f:g:h:">(receiver, 1L, 2.5, 3L, 4.5, 5L, 6.5, 7L, 8.5);
        objc::send<"takeObject:">(receiver, objc::Object{variadicCall(receiver.self, -7, 2.25)});
        objc::send<"takeObject:">(receiver, objc::Object{declaredCall(receiver.self, -7, 2.25)});
        // To null every shape answers nothing.
        const objc::Object null;
        objc::send<"takePoint:size:rect:">(receiver, objc::send<"point", CGPoint>(null),
                                           objc::send<"size", CGSize>(null), objc::send<"rect", CGRect>(null));
        objc::send<"takeSingle:double:">(receiver, objc::send<"single", float>(null),
                                         objc::send<"double", double>(null));
        receiver_ = receiver.self;
    }

    // The same shapes towards this image.
    CGRect takeGeometry(CGPoint point, CGSize size, CGRect rect) {
        return {{point.x + rect.origin.x, point.y + rect.origin.y},
                {size.width + rect.size.width, size.height + rect.size.height}};
    }
    std::int64_t takeIntegers(bool flag, int small, std::int64_t wide) { return (flag ? 1000 : 0) + small + wide; }
    double takeFractions(float single, double fraction) { return static_cast<double>(single) + fraction; }
    float scaled(float value, double factor) { return static_cast<float>(value * factor); }

  private:
    id receiver_ = nullptr;
};

/// Has of its own only the way to what it inherits.
class ShapesBelow : public Shapes {
  public:
    using Super = Shapes;
    static constexpr objc::Name className{SHAPES_CLASS "Below"};
    static void define(objc::ClassDefinition<ShapesBelow>& definition) {
        definition.method<"point:size:rect:", &ShapesBelow::inheritedGeometry>()
            .method<"flag:small:wide:", &ShapesBelow::inheritedIntegers>()
            .method<"scaled:by:", &ShapesBelow::inheritedScaled>();
    }
    CGRect inheritedGeometry(CGPoint point, CGSize size, CGRect rect) {
        return objc::sendSuper<"point:size:rect:", CGRect>(here(), objc::classOf<ShapesBelow>(), point, size, rect);
    }
    std::int64_t inheritedIntegers(bool flag, int small, std::int64_t wide) {
        return objc::sendSuper<"flag:small:wide:", std::int64_t>(here(), objc::classOf<ShapesBelow>(), flag, small,
                                                                 wide);
    }
    float inheritedScaled(float value, double factor) {
        return objc::sendSuper<"scaled:by:", float>(here(), objc::classOf<ShapesBelow>(), value, factor);
    }

  private:
    objc::Object here() const { return objc::Object{self}; }
};

[[gnu::constructor]] void registerAtLoad() { objc::registerClasses<Shapes, ShapesBelow>(); }

}  // namespace
