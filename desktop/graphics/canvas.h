// Drawing in points onto a Cairo context: shapes, paths, images, clips and groups, on the grid of the device's pixels.
#pragma once

#include <cairo.h>

#include <vector>

#include "desktop/graphics/color.h"
#include "desktop/graphics/geometry.h"
#include "desktop/graphics/image.h"

namespace graphics {

/// Lines, curves and arcs, in points.
class Path {
  public:
    Path& moveTo(Point point);
    Path& lineTo(Point point);
    Path& curveTo(Point control1, Point control2, Point end);
    /// Clockwise on the screen from `start` to `end`, angles in radians from the x axis.
    Path& arc(Point centre, double radius, double start, double end);
    /// The same way back: anticlockwise on the screen.
    Path& arcBack(Point centre, double radius, double start, double end);
    Path& close();

    Path& addRect(const Rect& rect);
    /// The radius is at most half of the shorter side.
    Path& addRoundedRect(const Rect& rect, double radius);
    Path& addCircle(Point centre, double radius);

  private:
    friend class Canvas;
    enum class Kind { Move, Line, Curve, Arc, ArcBack, Close };
    struct Step {
        Kind kind;
        Point points[3];
    };
    std::vector<Step> steps_;
};

enum class FillRule { Winding, EvenOdd };
enum class LineEnd { Round, Square, Butt };

/// Colours and coordinates in points; y grows downwards. Belongs to one thread at a time.
class Canvas {
  public:
    /// Draws on an image, which it keeps alive.
    explicit Canvas(const Image& image);
    /// Draws on a context whose unit is the pixel, with `scale` pixels a point. Takes a reference.
    Canvas(cairo_t* context, double scale);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    /// Transformation and clip, kept and brought back. Must be balanced; see SavedState.
    void save();
    void restore();

    void translate(double x, double y);
    void scale(double factor) { scale(factor, factor); }
    void scale(double x, double y);
    /// Clockwise, in radians, about the origin.
    void rotate(double angle);

    void clip(const Rect& rect);
    void clipRounded(const Rect& rect, double radius);
    void clip(const Path& path);
    /// What can still be drawn on, in points of the present transformation.
    Rect clipBounds() const;

    /// What is drawn between the two lands as one picture, `alpha` of it.
    void beginGroup();
    void endGroup(double alpha);

    /// Fills as given, with no snapping: edges between pixels are blended. See snapped().
    void fill(const Rect& rect, const Color& color);
    void fillRounded(const Rect& rect, double radius, const Color& color);
    void fillCircle(Point centre, double radius, const Color& color);
    void fill(const Path& path, const Color& color, FillRule rule = FillRule::Winding);
    /// From the first colour at the top to the second at the bottom.
    void fillGradient(const Rect& rect, const Color& top, const Color& bottom);

    /// The line lies inside the edge, so that the outline never leaves the rectangle.
    void stroke(const Rect& rect, double lineWidth, const Color& color);
    void strokeRounded(const Rect& rect, double radius, double lineWidth, const Color& color);
    /// The line lies on both sides of the circle.
    void strokeCircle(Point centre, double radius, double lineWidth, const Color& color);
    void stroke(const Path& path, double lineWidth, const Color& color, LineEnd end = LineEnd::Round);
    void line(Point from, Point to, double lineWidth, const Color& color, LineEnd end = LineEnd::Round);

    /// Exactly one device pixel thick at any scale, from `y` downwards or `x` rightwards, moved to the nearest pixel.
    void horizontalHairline(double left, double right, double y, const Color& color);
    void verticalHairline(double x, double top, double bottom, const Color& color);
    /// One pixel just inside the snapped rectangle's edges.
    void hairlineFrame(const Rect& rect, const Color& color);
    void hairlineFrameRounded(const Rect& rect, double radius, const Color& color);

    /// The soft shadow of a card. Draw the card over it. `blur` is how far the shadow fades, in points.
    void shadow(const Rect& rect, double radius, double blur, Point offset, const Color& color);

    /// Stretches the image over the rectangle.
    void draw(const Image& image, const Rect& rect, double alpha = 1);
    /// The same, with the image's alpha as a stencil for the colour.
    void drawTinted(const Image& image, const Rect& rect, const Color& color);

    /// Device pixels a point, as transformed at present.
    double pixelsPerPoint() const;
    /// The size of a device pixel in points.
    double pixel() const { return 1 / pixelsPerPoint(); }
    /// The nearest rectangle with its edges between device pixels; never thinner than a pixel unless it was empty.
    Rect snapped(const Rect& rect) const;
    Point snapped(Point point) const;

    /// Borrowed; its unit is the point.
    cairo_t* context() const { return context_; }

  private:
    void source(const Color& color);
    void trace(const Path& path);
    void traceRounded(const Rect& rect, double radius);

    cairo_t* context_;
};

/// Keeps the canvas's state while it lives.
class SavedState {
  public:
    explicit SavedState(Canvas& canvas) : canvas_(canvas) { canvas_.save(); }
    ~SavedState() { canvas_.restore(); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

  private:
    Canvas& canvas_;
};

}  // namespace graphics
