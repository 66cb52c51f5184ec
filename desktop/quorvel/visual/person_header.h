// QVRecentsPersonPhoneHeaderView: above a person's card, the calls of the day and the way to the whole history.
#pragma once

#include <string>
#include <vector>

#include "desktop/quorvel/visual/call_facts.h"
#include "desktop/uikit/button.h"
#include "desktop/weak/weak.h"

namespace quorvel {

class PersonHeader : public uikit::View {
  public:
    using Super = uikit::View;
    static constexpr objc::Name className{"QVRecentsPersonPhoneHeaderView"};
    static void define(objc::ClassDefinition<PersonHeader>& definition);

    // Messages of the same names. The delegate is not retained; it is sent `showLogAction:` with the button by the
    // history button and `detailsButotnClicked` by the detail button, where it answers them.
    objc::Object initWithFrame(uikit::Rect frame) override;
    /// An NSArray of QVCallEntry, newest first. The view grows or shrinks to the height that it needs.
    void setCallRecords(objc::Object records);
    objc::Object callRecords() const { return records_; }
    objc::Strong<> delegate() const { return delegate_.load(); }
    void setDelegate(objc::Object delegate) { delegate_ = delegate; }

    uikit::Size sizeThatFits(uikit::Size size) override;
    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    /// The day, then time and duration of each call that is shown.
    std::vector<std::string> drawnTexts() const override;

  private:
    struct Line {
        CallFacts facts;
        std::string time;
        std::string duration;
    };
    void showHistory(objc::Object button);
    void showDetails();
    double height() const;

    objc::Strong<> records_;
    std::string day_;
    std::vector<Line> lines_;
    std::string more_;  // "+12", the calls that there is no room for
    weak::Object delegate_;
    objc::Ref<uikit::Button> history_;
    objc::Ref<uikit::Button> details_;
};

}  // namespace quorvel
