// Draws the toolkit's controls on one screen, to be looked at: uikit_sample FILE.png [PRODUCT_IMAGES_FOLDER]
#include <cstdio>

#include "desktop/graphics/icons.h"
#include "desktop/uikit/activity_indicator.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/button.h"
#include "desktop/uikit/segmented_control.h"

namespace {

using namespace uikit;

template <class T>
objc::Ref<T> add(View& parent, Rect frame) {
    auto view = objc::Ref<T>::template make<"initWithFrame:">(frame);
    parent.addSubview(view);
    return view;
}

objc::Object symbol(graphics::Symbol which) { return uiImage(graphics::symbolImage(which, 2)); }

void label(View& parent, double y, const char* text, graphics::Font font, long alignment = 0, bool enabled = true) {
    auto made = add<Label>(parent, {{16, y}, {288, 24}});
    made->setString(text);
    made->setFontValue(font);
    made->setTextAlignment(alignment);
    made->setEnabled(enabled);
}

void segments(View& parent, double y, bool images, long selected, bool enabled = true) {
    auto items = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    using graphics::Symbol;
    const Symbol symbols[] = {Symbol::AllCalls, Symbol::DialledCalls, Symbol::ReceivedCalls, Symbol::MissedCalls};
    const char* titles[] = {"All", "Dialled", "Received", "Missed"};
    for (int i = 0; i < 4; ++i) objc::send<"addObject:">(items, images ? symbol(symbols[i]) : nsString(titles[i]));
    auto control = objc::Ref<SegmentedControl>::make<"initWithItems:">(items);
    control->setFrame({{50, y}, {220, 29}});
    control->setSelectedSegmentIndex(selected);
    control->setEnabled(enabled);
    parent.addSubview(control);
}

Button* button(View& parent, Rect frame, long type, const char* title, objc::Object image = {}) {
    auto* made = objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), type));
    made->setFrame(frame);
    if (*title) made->setTitleForState(nsString(title), normalState);
    if (image) made->setImageForState(image, normalState);
    parent.addSubview(made);
    return made;
}

void buttons(View& parent) {
    button(parent, {{16, 330}, {80, 36}}, 1, "Call");
    button(parent, {{106, 330}, {80, 36}}, 1, "Pressed")->setHighlighted(true);
    button(parent, {{196, 330}, {80, 36}}, 1, "Disabled")->setEnabled(false);
    auto* filled = button(parent, {{16, 376}, {288, 44}}, 0, "Delete all calls");
    filled->setBackgroundColor(uiColor(palette::destructive));
    filled->setCornerRadius(8);
    button(parent, {{16, 432}, {140, 40}}, 1, " Message", symbol(graphics::Symbol::Message));
    button(parent, {{170, 432}, {32, 32}}, 0, "", symbol(graphics::Symbol::DeleteAll))->setImageTint(palette::brand);
    button(parent, {{214, 432}, {32, 32}}, 0, "", symbol(graphics::Symbol::Delete))->setImageTint(palette::brand);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: uikit_sample FILE.png\n");
        return 2;
    }
    const objc::AutoreleasePool pool;
    setStatusBarClock([] { return std::string("09:41"); });
    const auto window = objc::Ref<Window>::make<"initWithFrame:">(Rect{{}, {320, 568}});
    const auto screen = objc::Ref<ViewController>::make();
    window->setRootViewController(screen);
    window->makeKeyAndVisible();
    Application::shared()->setNetworkActivityIndicatorVisible(true);
    View& view = *screen->view();
    label(view, 32, "Recents", graphics::Font::boldSystem(17), 1);
    label(view, 64, "Anna Bergström-Hämäläinen-Wolkenstein the Second", graphics::Font::system(17));
    label(view, 90, "+49 30 123456 · Berlin 📞 שלום", graphics::Font::system(13), 2);
    label(view, 114, "Not available", graphics::Font::system(15), 0, false);
    segments(view, 150, true, 0);
    segments(view, 195, false, 2);
    segments(view, 240, false, 1, false);
    double x = 40;
    for (long style = 0; style < 3; ++style, x += 60) {
        auto indicator = objc::Ref<ActivityIndicator>::make<"initWithActivityIndicatorStyle:">(style);
        indicator->setCenter({x, 305});
        if (style < 2) indicator->setColor(uiColor(palette::brand));
        indicator->startAnimating();
        view.addSubview(indicator);
    }
    buttons(view);
    auto paragraph = add<Label>(view, {{16, 484}, {288, 70}});
    paragraph->setNumberOfLines(3);
    paragraph->setFontValue(graphics::Font::system(13));
    paragraph->setColorValue(palette::secondaryText);
    paragraph->setString(
        "Lines that wrap stand within the width that there is, and what does not fit in three of them "
        "ends with an ellipsis, as a person expects of a telephone that one would want to use.");
    graphics::Image image({320, 568}, 2);
    {
        graphics::Canvas canvas(image);
        canvas.fill({{}, {320, 568}}, Color::white());
        window->renderScreen(canvas);
    }
    const std::string error = image.writePng(argv[1]);
    if (!error.empty()) std::fprintf(stderr, "%s\n", error.c_str());
    return error.empty() ? 0 : 1;
}
