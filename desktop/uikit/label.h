// UILabel: lines of text in one font and one colour.
#pragma once

#include "desktop/uikit/color.h"
#include "desktop/uikit/view.h"

namespace uikit {

class Label : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UILabel"};
    static void define(objc::ClassDefinition<Label>& definition);
    Label();

    // Messages of the same names. The text is copied.
    objc::Object text() const { return text_; }
    void setText(objc::Object text);
    objc::Object font() const;
    void setFont(objc::Object font);
    objc::Object textColor() const;
    void setTextColor(objc::Object color);
    objc::Object highlightedTextColor() const { return highlightedColor_; }
    void setHighlightedTextColor(objc::Object color);
    bool isHighlighted() const { return highlighted_; }
    void setHighlighted(bool highlighted);
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);
    long textAlignment() const { return alignment_; }  // 0 left, 1 centre, 2 right, 3 and 4 natural
    void setTextAlignment(long alignment);
    long lineBreakMode() const { return lineBreak_; }  // 0 words, 1 characters, 2 clip, 3 head, 4 tail, 5 middle
    void setLineBreakMode(long mode);
    long numberOfLines() const { return lines_; }  // 0 for as many as the text needs
    void setNumberOfLines(long lines);
    bool adjustsFontSizeToFitWidth() const { return shrinks_; }
    void setAdjustsFontSizeToFitWidth(bool shrinks);
    double minimumScaleFactor() const { return minimumScale_; }
    void setMinimumScaleFactor(double factor) { minimumScale_ = factor; }

    Size sizeThatFits(Size size) override;
    void draw(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;

    // The same in C++.
    const std::string& string() const { return string_; }
    void setString(std::string_view text);
    const graphics::Font& fontValue() const { return font_; }
    void setFontValue(const graphics::Font& font);
    void setColorValue(const Color& color);

  private:
    graphics::TextStyle style() const;
    graphics::TextStyle fittedStyle() const;

    objc::Strong<> text_;
    std::string string_;
    graphics::Font font_ = graphics::Font::system(17);
    objc::Strong<> color_;
    objc::Strong<> highlightedColor_;
    long alignment_ = 0;
    long lineBreak_ = 4;
    long lines_ = 1;
    bool highlighted_ = false;
    bool enabled_ = true;
    bool shrinks_ = false;
    double minimumScale_ = 0;
};

}  // namespace uikit
