// Sheets and alerts: a panel over everything with buttons, one of which ends it.
#pragma once

#include <functional>

#include "desktop/uikit/animation.h"
#include "desktop/uikit/button.h"

namespace uikit {

/// The panel of an action sheet (from below) or of an alert (in the middle).
class Sheet : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UISheetPanel"};
    static void define(objc::ClassDefinition<Sheet>& definition);
    ~Sheet() override;

    enum class Style { ActionSheet, Alert };
    enum class Role { Normal, Destructive, Cancel };
    struct Choice {
        std::string title;
        Role role = Role::Normal;
    };
    /// `chosen` is called once, as the panel begins to leave, with the choice's index, or -1 when none was; never
    /// where the panel's window goes away first.
    struct Content {
        Style style = Style::ActionSheet;
        std::string title;
        std::string message;
        std::vector<Choice> choices;
    };

    /// Shows a panel in the window, over everything there; `gone` follows `chosen` when the panel has left. Main
    /// thread.
    static objc::Ref<Sheet> present(Window* window, Content content, std::function<void(long)> chosen,
                                    std::function<void(long)> gone = {});
    /// Ends it as if the choice was taken; -1 for none. Nothing happens the second time.
    void dismiss(long choice, bool animated);

    /// Darkens what the window draws above its views there.
    void dim(graphics::Canvas& canvas, const Rect& rect) const;

    const Content& content() const { return content_; }
    bool isLeaving() const { return leaving_; }

    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    bool touch(const Touch&) override { return true; }
    /// A panel whose window goes away is never answered: it lets go of whoever waits, who may own the panel.
    void windowChanged(Window* window) override;
    std::vector<std::string> drawnTexts() const override;

  private:
    void build();
    void choose(objc::Object button);
    double panelHeight();
    void reveal(double amount);

    Content content_;
    std::function<void(long)> chosen_;
    std::function<void(long)> gone_;
    objc::Ref<View> panel_;
    objc::Ref<Label> label_;
    std::vector<objc::Ref<Button>> buttons_;
    double shown_ = 0;
    bool leaving_ = false;
    AnimationToken animation_ = 0;
};

/// The sheet or alert in front, or null.
Sheet* frontSheet();

}  // namespace uikit
