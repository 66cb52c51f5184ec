// MBProgressHUD.
#include "desktop/quorvel/visual/progress_hud.h"

#include <algorithm>
#include <thread>

#include "desktop/dispatch/main_loop.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"
#include "platform/dispatch.h"

namespace quorvel {
namespace {

constexpr double fadeSeconds = 0.25;
constexpr double padding = 20;
constexpr double spacing = 10;
constexpr double indicatorSide = 37;
constexpr double smallestPanel = 110;
constexpr double rounding = 10;
constexpr double screenMargin = 40;
constexpr double nanoseconds = 1e9;
constexpr long largeWhiteIndicator = 0;

}  // namespace

void ProgressHud::define(objc::ClassDefinition<ProgressHud>& definition) {
    definition.classMethod<"showHUDAddedTo:animated:", &ProgressHud::showAddedTo>()
        .method<"setColor:", &ProgressHud::setColor>()
        .method<"setLabelColor:", &ProgressHud::setLabelColor>()
        .method<"setDetailsLabelColor:", &ProgressHud::setDetailsLabelColor>()
        .method<"labelText", &ProgressHud::labelText>()
        .method<"setLabelText:", &ProgressHud::setLabelText>()
        .method<"detailsLabelText", &ProgressHud::detailsLabelText>()
        .method<"setDetailsLabelText:", &ProgressHud::setDetailsLabelText>()
        .method<"delegate", &ProgressHud::delegate>()
        .method<"setDelegate:", &ProgressHud::setDelegate>()
        .method<"mode", &ProgressHud::mode>()
        .method<"setMode:", &ProgressHud::setMode>()
        .method<"opacity", &ProgressHud::opacity>()
        .method<"setOpacity:", &ProgressHud::setOpacity>()
        .method<"setActivityIndicatorTintColor:", &ProgressHud::setActivityIndicatorTintColor>()
        .method<"show:", &ProgressHud::show>()
        .method<"hide:", &ProgressHud::hide>()
        .method<"hide:afterDelay:", &ProgressHud::hideAfterDelay>()
        .method<"showWhileExecuting:onTarget:withObject:animated:", &ProgressHud::showWhileExecuting>();
}

ProgressHud::~ProgressHud() { uikit::cancelAnimation(animation_); }

ProgressHud* ProgressHud::showAddedTo(Class cls, uikit::View* view, bool animated) {
    if (!view) return nullptr;
    const auto made = objc::make<objc::Object, "initWithFrame:">(cls, uikit::Rect{{0, 0}, view->bounds().size});
    auto* hud = objc::peerOf<ProgressHud>(made.self());
    view->addSubview(hud);
    objc::send<"show:">(made.get(), animated);
    return hud;
}

objc::Object ProgressHud::initWithFrame(uikit::Rect frame) {
    const auto made = View::initWithFrame(frame);
    setAutoresizingMask(uikit::flexibleWidth | uikit::flexibleHeight);
    setAlpha(0);
    label_ = objc::Ref<uikit::Label>::make();
    label_->setFontValue(graphics::Font::boldSystem(16));
    details_ = objc::Ref<uikit::Label>::make();
    details_->setFontValue(graphics::Font::system(12));
    details_->setNumberOfLines(0);
    for (auto* label : {label_.get(), details_.get()}) {
        label->setTextAlignment(1);
        label->setTextColor(uikit::uiColor(uikit::Color::white()));
        addSubview(label);
    }
    indicator_ = objc::Ref<uikit::ActivityIndicator>::make<"initWithActivityIndicatorStyle:">(largeWhiteIndicator);
    addSubview(indicator_);
    indicator_->startAnimating();
    return made;
}

void ProgressHud::setColor(objc::Object color) {
    color_ = uikit::colorOf(color);
    setNeedsDisplay();
}

void ProgressHud::setLabelText(objc::Object text) {
    label_->setText(text);
    setNeedsLayout();
}

void ProgressHud::setDetailsLabelText(objc::Object text) {
    details_->setText(text);
    setNeedsLayout();
}

void ProgressHud::setMode(int mode) {
    mode_ = mode;
    indicator_->setHidden(mode != 0);
    setNeedsLayout();
}

void ProgressHud::setOpacity(float opacity) {
    opacity_ = opacity;
    setNeedsDisplay();
}

void ProgressHud::setActivityIndicatorTintColor(objc::Object color) {
    objc::send<"setColor:">(indicator_->object(), color);
}

void ProgressHud::fade(double to, bool animated, std::function<void()> ended) {
    uikit::cancelAnimation(animation_);
    const double from = alpha();
    animation_ = uikit::animate(
        animated ? fadeSeconds : 0, uikit::Curve::EaseOut,
        [this, from, to](double progress) { setAlpha(from + (to - from) * progress); },
        [ended = std::move(ended)](bool finished) {
            if (finished && ended) ended();
        });
}

void ProgressHud::show(bool animated) {
    leaving_ = false;
    fade(1, animated, {});
}

void ProgressHud::hide(bool animated) {
    if (std::exchange(leaving_, true)) return;
    fade(0, animated, [me = objc::Ref<ProgressHud>(this)] { me->ended(); });
}

void ProgressHud::ended() {
    const objc::Ref<ProgressHud> me(this);
    indicator_->stopAnimating();
    const auto receiver = delegate();
    if (receiver && objc::respondsTo(receiver, objc::selector<"hudWasHidden:">()))
        objc::send<"hudWasHidden:">(receiver, object());
    removeFromSuperview();
}

void ProgressHud::hideAfterDelay(bool animated, double seconds) {
    struct Context {
        objc::Ref<ProgressHud> hud;
        bool animated;
    };
    auto* context = new Context{objc::Ref<ProgressHud>(this), animated};
    dispatch_after_f(dispatch_time(0, static_cast<std::int64_t>(seconds * nanoseconds)), dispatch::mainQueue(), context,
                     [](void* kept) {
                         const std::unique_ptr<Context> owned(static_cast<Context*>(kept));
                         objc::send<"hide:">(owned->hud->object(), owned->animated);
                     });
}

void ProgressHud::showWhileExecuting(SEL selector, objc::Object target, objc::Object object, bool animated) {
    std::thread([activity = dispatch::Activity(), me = objc::Ref<ProgressHud>(this), selector,
                 kept = objc::Strong<>(target), argument = objc::Strong<>(object), animated]() mutable {
        const dispatch::AutoreleaseScope scope;
        objc::sendSelector(kept.get(), selector, argument.get());
        dispatch::asyncOnMain([me, animated] { objc::send<"hide:">(me->object(), animated); });
        // What the thread kept goes on the main thread, where views may end.
        dispatch::asyncOnMain([me = std::move(me), kept = std::move(kept), argument = std::move(argument)] {});
    }).detach();
    show(animated);
}

void ProgressHud::layoutSubviews() {
    const uikit::Size screen = bounds().size;
    const double widest = std::max(0.0, screen.width - 2 * screenMargin - 2 * padding);
    auto measure = [&](uikit::Label* label) {
        if (label->string().empty()) return uikit::Size{};
        const uikit::Size size = label->sizeThatFits({widest, 0});
        return uikit::Size{std::min(size.width, widest), size.height};
    };
    const uikit::Size text = measure(label_);
    const uikit::Size below = measure(details_);
    double height = mode_ == 0 ? indicatorSide : 0;
    for (const double part : {text.height, below.height})
        if (part > 0) height += part + (height > 0 ? spacing : 0);
    const double width =
        std::max({smallestPanel, text.width + 2 * padding, below.width + 2 * padding, height + 2 * padding});
    panel_ = graphics::centred({width, std::max(smallestPanel, height + 2 * padding)}, bounds());
    double y = panel_.centre().y - height / 2;
    if (mode_ == 0) {
        indicator_->setFrame({{panel_.centre().x - indicatorSide / 2, y}, {indicatorSide, indicatorSide}});
        y += indicatorSide + spacing;
    }
    label_->setFrame({{panel_.left(), y}, {width, text.height}});
    if (text.height > 0) y += text.height + spacing;
    details_->setFrame({{panel_.left() + padding, y}, {width - 2 * padding, below.height}});
    setNeedsDisplay();
}

void ProgressHud::draw(graphics::Canvas& canvas) {
    canvas.shadow(panel_, rounding, 12, {0, 2}, uikit::Color::gray(0, 0.18));
    // Text that shines through would be read with the panel's own, so the panel is far denser than its opacity says.
    constexpr double transparency = 0.04;
    canvas.fillRounded(panel_, rounding, color_.withAlpha(1 - (1 - static_cast<double>(opacity_)) * transparency));
    canvas.hairlineFrameRounded(panel_, rounding, uikit::palette::separator);
}

std::vector<ProgressHud*> visibleIndicators() {
    std::vector<ProgressHud*> found;
    auto collect = [&](auto& self, uikit::View* view) -> void {
        if (auto* hud = objc::peerIf<ProgressHud>(view->object())) {
            if (!hud->isLeaving()) found.push_back(hud);
            return;
        }
        for (const auto& below : view->subviews()) self(self, below.get());
    };
    if (auto* window = uikit::Application::shared()->keyWindow()) collect(collect, window);
    return found;
}

}  // namespace quorvel
