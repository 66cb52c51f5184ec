// A row of a card: a value under its label, a button, or another person.
#pragma once

#include <functional>
#include <string>

#include "desktop/uikit/button.h"
#include "desktop/uikit/table_view_cell.h"

namespace addressbookui {

struct CardRow {
    enum class Look { value, button, destructive, person };
    enum class Emphasis { none, highlighted, important };

    Look look = Look::value;
    std::string label;
    std::string text;
    Emphasis emphasis = Emphasis::none;
    /// What a tap does; a row without it cannot be tapped.
    std::function<void()> chosen;
    /// What the small message button on the right does; a row without it has none.
    std::function<void()> message;
    /// Whether a receiver is drawn on the right.
    bool callable = false;
};

class CardCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"ABCardCell"};
    static void define(objc::ClassDefinition<CardCell>& definition);

    void setRow(const CardRow& row);
    const CardRow& row() const { return row_; }
    /// How high a row is in a table of that width, in points.
    static double heightOf(const CardRow& row, double width);

    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;

  private:
    void sendMessage();

    CardRow row_;
    objc::Ref<uikit::Button> message_;
};

}  // namespace addressbookui
