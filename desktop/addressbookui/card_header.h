// The top of a card: picture, name, what is said about the person, and below it the view that an application adds.
#pragma once

#include <string>
#include <vector>

#include "desktop/graphics/image.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/view.h"

namespace addressbookui {

class CardHeader : public uikit::View {
  public:
    using Super = uikit::View;
    static constexpr objc::Name className{"ABCardHeaderView"};
    static void define(objc::ClassDefinition<CardHeader>&) {}

    struct Content {
        graphics::Image picture;
        /// Which colour stands behind the initials, see quorvel::pictureTone().
        unsigned tone = 0;
        std::string name;
        /// Letters in place of a picture; empty for the figure of people nobody knows.
        std::string initials;
        /// Small lines below the name.
        std::vector<std::string> lines;
    };
    void setContent(Content content);
    const Content& content() const { return content_; }
    /// Null for none. The view keeps the height that it has, and takes the header's width.
    void setAddedView(uikit::View* view);
    /// Gives the header the height that it needs now; answers whether it has changed.
    bool fit(double width);

    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;

  private:
    double topHeight(double width) const;

    Content content_;
    objc::Ref<uikit::View> added_;
};

}  // namespace addressbookui
