#pragma once

#include <cairo.h>

#include "graphics/canvas.h"
#include "platform/cairo/text_layout.h"

namespace lumowatt::cairo {

/// A canvas on a Cairo context.
class CairoCanvas : public Canvas {
 public:
  /// Creates a canvas that draws on `cairo`, which must outlive the canvas. The y of `cairo` must
  /// grow upward.
  CairoCanvas(cairo_t* cairo, Appearance appearance);

  /// Returns whether the canvas can draw text. If not, the caller must not draw on it.
  bool hasFonts() const { return textLayout_.isValid(); }

  void fill(const Rect& rect, const Color& color) override;
  void fillRoundedRect(const Rect& rect, double radius, const Color& color) override;
  void fillPath(const Path& path, const Color& color, double opacity) override;
  void stroke(const Path& path, const Stroke& stroke, const Color& color) override;
  void drawText(const AttributedString& text, Point origin) override;
  Size textSize(const AttributedString& text) override;

  /// Draws an image. A symbol is scaled to fit the rectangle and centered. A template has the text
  /// color.
  void drawImage(const Image& image, const Rect& rect) override;

 private:
  void drawDrawing(const Drawing& drawing, const Rect& rect);
  void drawSymbol(const Symbol& symbol, const Rect& rect);
  void setColor(const Color& color, double opacity = 1.0);

  cairo_t* cairo_;
  Appearance appearance_;
  TextLayout textLayout_;
  bool flipped_ = false;
};

}  // namespace lumowatt::cairo
