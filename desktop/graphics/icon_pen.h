// What the symbols are drawn with, and the functions that draw them: one a symbol, in the symbol's own box.
#pragma once

#include "desktop/graphics/canvas.h"

namespace graphics {

/// Draws in one opaque colour, with lines of the symbols' common weight unless told another.
class Pen {
  public:
    static constexpr double common = 1.5;

    Pen(Canvas& canvas, const Color& color) : canvas_(canvas), color_(color) {}

    void line(Point from, Point to, double width = common) const { canvas_.line(from, to, width, color_); }
    void stroke(const Path& path, double width = common) const { canvas_.stroke(path, width, color_); }
    void fill(const Path& path) const { canvas_.fill(path, color_); }
    void circle(Point centre, double radius, double width = common) const {
        canvas_.strokeCircle(centre, radius, width, color_);
    }
    void dot(Point centre, double radius) const { canvas_.fillCircle(centre, radius, color_); }
    /// A cross, `reach` from its centre each way.
    void cross(Point centre, double reach, double width = common) const;
    /// Takes away what lies under the cross.
    void cutCross(Point centre, double reach, double width) const;

    Canvas& canvas() const { return canvas_; }

  private:
    Canvas& canvas_;
    Color color_;
};

/// A receiver of a telephone lying on its ends, 20 wide, about the origin.
Path handset();

namespace icons {

void allCalls(const Pen& pen);
void dialledCalls(const Pen& pen);
void receivedCalls(const Pen& pen);
void missedCalls(const Pen& pen);
void phone(const Pen& pen);
void phoneFilled(const Pen& pen);
void hangUp(const Pen& pen);
void video(const Pen& pen);
void message(const Pen& pen);
void person(const Pen& pen);
void outgoing(const Pen& pen);
void incoming(const Pen& pen);
void missed(const Pen& pen);

void deleteAll(const Pen& pen);
void trash(const Pen& pen);
void cancel(const Pen& pen);
void stop(const Pen& pen);
void back(const Pen& pen);
void disclosure(const Pen& pen);
void detail(const Pen& pen);
void magnifier(const Pen& pen);
void clear(const Pen& pen);
void add(const Pen& pen);
void checkmark(const Pen& pen);
void favorites(const Pen& pen);
void recents(const Pen& pen);
void contacts(const Pen& pen);
void keypad(const Pen& pen);
void voicemail(const Pen& pen);

}  // namespace icons

}  // namespace graphics
