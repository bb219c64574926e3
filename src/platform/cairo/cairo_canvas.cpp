#include "platform/cairo/cairo_canvas.h"

#include <algorithm>
#include <numbers>
#include <utility>
#include <variant>

#include "artwork/battery.h"
#include "artwork/palette.h"

namespace lumowatt::cairo {

namespace {

/// Saves the state of a Cairo context and restores it on destruction.
class SavedState {
 public:
  explicit SavedState(cairo_t* cairo) : cairo_(cairo) { cairo_save(cairo_); }
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;
  ~SavedState() { cairo_restore(cairo_); }

 private:
  cairo_t* cairo_;
};

/// Appends each segment of a path to the current path of a Cairo context.
struct PathTracer {
  cairo_t* cairo;

  void operator()(const MoveTo& move) const { cairo_move_to(cairo, move.to.x, move.to.y); }
  void operator()(const LineTo& line) const { cairo_line_to(cairo, line.to.x, line.to.y); }
  void operator()(const CurveTo& curve) const {
    cairo_curve_to(cairo, curve.control1.x, curve.control1.y, curve.control2.x, curve.control2.y,
                   curve.to.x, curve.to.y);
  }
  void operator()(const ClosePath&) const { cairo_close_path(cairo); }
};

void trace(cairo_t* cairo, const Path& path) {
  cairo_new_path(cairo);
  for (const auto& element : path) std::visit(PathTracer{cairo}, element);
}

/// Reverses the y axis by reflection in the horizontal line at `middle`.
void flip(cairo_t* cairo, double middle) {
  cairo_translate(cairo, 0.0, 2 * middle);
  cairo_scale(cairo, 1.0, -1.0);
}

}  // namespace

CairoCanvas::CairoCanvas(cairo_t* cairo, Appearance appearance)
    : cairo_(cairo), appearance_(appearance), textLayout_(appearance) {}

void CairoCanvas::setColor(const Color& color, double opacity) {
  const auto [red, green, blue, alpha] = artwork::resolved(color, appearance_);
  cairo_set_source_rgba(cairo_, red, green, blue, alpha * opacity);
}

void CairoCanvas::fill(const Rect& rect, const Color& color) {
  setColor(color);
  cairo_new_path(cairo_);
  cairo_rectangle(cairo_, rect.x, rect.y, rect.width, rect.height);
  cairo_fill(cairo_);
}

void CairoCanvas::fillRoundedRect(const Rect& rect, double radius, const Color& color) {
  const double quarter = std::numbers::pi / 2;
  const double r = std::min({radius, rect.width / 2, rect.height / 2});
  setColor(color);
  cairo_new_path(cairo_);
  cairo_arc(cairo_, rect.maxX() - r, rect.minY() + r, r, -quarter, 0.0);
  cairo_arc(cairo_, rect.maxX() - r, rect.maxY() - r, r, 0.0, quarter);
  cairo_arc(cairo_, rect.minX() + r, rect.maxY() - r, r, quarter, 2 * quarter);
  cairo_arc(cairo_, rect.minX() + r, rect.minY() + r, r, 2 * quarter, 3 * quarter);
  cairo_close_path(cairo_);
  cairo_fill(cairo_);
}

void CairoCanvas::fillPath(const Path& path, const Color& color, double opacity) {
  setColor(color, opacity);
  trace(cairo_, path);
  cairo_fill(cairo_);
}

void CairoCanvas::stroke(const Path& path, const Stroke& stroke, const Color& color) {
  setColor(color);
  cairo_set_line_width(cairo_, stroke.width);
  cairo_set_line_join(
      cairo_, stroke.join == LineJoin::round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
  cairo_set_line_cap(cairo_,
                     stroke.cap == LineCap::round ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
  trace(cairo_, path);
  cairo_stroke(cairo_);
}

void CairoCanvas::drawText(const AttributedString& text, Point origin) {
  const SavedState saved(cairo_);
  cairo_translate(cairo_, origin.x, origin.y);
  if (!flipped_) flip(cairo_, textSize(text).height / 2);
  cairo_move_to(cairo_, 0.0, 0.0);
  textLayout_.draw(cairo_, text);
}

Size CairoCanvas::textSize(const AttributedString& text) { return textLayout_.size(text); }

void CairoCanvas::drawImage(const Image& image, const Rect& rect) {
  const SavedState saved(cairo_);
  cairo_translate(cairo_, rect.x, rect.y);
  if (const auto* drawing = std::get_if<Drawing>(&image.content)) {
    drawDrawing(*drawing, rect);
  } else {
    drawSymbol(std::get<Symbol>(image.content), rect);
  }
}

void CairoCanvas::drawDrawing(const Drawing& drawing, const Rect& rect) {
  const auto [width, height] = drawing.size;
  if (width <= 0.0 || height <= 0.0 || rect.width <= 0.0 || rect.height <= 0.0) return;
  cairo_scale(cairo_, rect.width / width, rect.height / height);
  const bool outer = std::exchange(flipped_, drawing.flipped);
  if (flipped_ != outer) flip(cairo_, height / 2);
  drawing.draw(*this, {0.0, 0.0, width, height});
  flipped_ = outer;
}

void CairoCanvas::drawSymbol(const Symbol& symbol, const Rect& rect) {
  const auto area = artwork::symbolPath(symbol.name);
  if (!area) return;
  const Rect& shape = artwork::bounds;
  const double scale = std::min(rect.width / shape.width, rect.height / shape.height);
  if (scale <= 0.0) return;
  if (!flipped_) flip(cairo_, rect.height / 2);
  cairo_translate(cairo_, rect.width / 2, rect.height / 2);
  cairo_scale(cairo_, scale, scale);
  cairo_translate(cairo_, -(shape.x + shape.width / 2), -(shape.y + shape.height / 2));
  trace(cairo_, *area);
  setColor(symbol.tint.value_or(SystemColor::label));
  cairo_set_fill_rule(cairo_, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_fill(cairo_);
}

}  // namespace lumowatt::cairo
