// UIButton: a title, an image or both, by state.
#pragma once

#include <map>
#include <optional>

#include "desktop/uikit/control.h"
#include "desktop/uikit/image_view.h"
#include "desktop/uikit/label.h"

namespace uikit {

class Button : public Control {
  public:
    using Super = Control;
    static constexpr objc::Name className{"UIButton"};
    static void define(objc::ClassDefinition<Button>& definition);
    ~Button() override;

    /// `buttonWithType:`: 0 custom, 1 system (its title and its images take the tint). Autoreleased.
    static objc::Object withType(Class cls, long type);

    // Messages of the same names. A state for which nothing was set shows what the normal state shows.
    long buttonType() const { return type_; }
    objc::Object titleForState(unsigned long state) const;
    void setTitleForState(objc::Object title, unsigned long state);
    objc::Object titleColorForState(unsigned long state) const;
    void setTitleColorForState(objc::Object color, unsigned long state);
    objc::Object imageForState(unsigned long state) const;
    void setImageForState(objc::Object image, unsigned long state);
    objc::Object backgroundImageForState(unsigned long state) const;
    void setBackgroundImageForState(objc::Object image, unsigned long state);
    objc::Object currentTitle() const { return titleForState(state()); }
    objc::Object currentTitleColor() const;
    objc::Object currentImage() const { return imageForState(state()); }
    Label* titleLabel();
    ImageView* imageView();
    EdgeInsets contentEdgeInsets() const { return contentInsets_; }
    void setContentEdgeInsets(EdgeInsets insets);
    EdgeInsets titleEdgeInsets() const { return titleInsets_; }
    void setTitleEdgeInsets(EdgeInsets insets);
    EdgeInsets imageEdgeInsets() const { return imageInsets_; }
    void setImageEdgeInsets(EdgeInsets insets);
    long contentHorizontalAlignment() const { return horizontal_; }  // 0 centre, 1 left, 2 right
    void setContentHorizontalAlignment(long alignment);

    objc::Object initWithFrame(Rect frame) override;
    void layoutSubviews() override;
    Size sizeThatFits(Size size) override;
    void draw(graphics::Canvas& canvas) override;

    /// Fills the shape of every image with this colour, whatever the button's type; what `setImageTintColor:` does.
    void setImageTint(Color color);

  protected:
    void stateChanged() override;
    void tintColorDidChange() override;

  private:
    using ByState = std::map<unsigned long, objc::Strong<>>;
    static objc::Object lookUp(const ByState& values, unsigned long state);
    void set(ByState& values, objc::Object value, unsigned long state);
    void refresh();
    void press();
    Color titleColor() const;
    std::optional<Color> stencil() const;

    long type_ = 0;
    ByState titles_;
    ByState titleColors_;
    ByState images_;
    ByState backgroundImages_;
    std::optional<Color> imageTint_;
    EdgeInsets contentInsets_;
    EdgeInsets titleInsets_;
    EdgeInsets imageInsets_;
    long horizontal_ = 0;
    objc::Ref<Label> titleLabel_;
    objc::Ref<ImageView> imageView_;
    bool wasPressed_ = false;
    AnimationToken release_ = 0;
};

}  // namespace uikit
