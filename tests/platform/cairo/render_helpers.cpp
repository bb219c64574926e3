#include "platform/cairo/render_helpers.h"

#include <gtest/gtest.h>

#include "platform/cairo/cairo_bitmap.h"

namespace lumowatt::cairo {

Picture drawn(Size size, const std::function<void(Canvas&)>& draw, double scale,
              Appearance appearance) {
  CairoBitmap bitmap(size, scale, appearance);
  EXPECT_TRUE(bitmap.check());
  draw(bitmap.canvas());
  return Picture(bitmap.encodePng().value());
}

Picture drawnInImage(Size size, bool flipped, const std::function<void(Canvas&)>& draw,
                     double scale) {
  const Drawing drawing{
      .size = size, .flipped = flipped, .draw = [&](Canvas& canvas, const Rect&) { draw(canvas); }};
  return drawn(
      size,
      [&](Canvas& canvas) {
        canvas.drawImage({drawing}, {0.0, 0.0, size.width, size.height});
      },
      scale);
}

Size measureText(const AttributedString& text) {
  CairoBitmap bitmap({1.0, 1.0}, 1.0, Appearance::light);
  return bitmap.canvas().textSize(text);
}

Rect inkBounds(const Picture& picture) {
  return picture.inkBounds(
      {0.0, 0.0, static_cast<double>(picture.width()), static_cast<double>(picture.height())},
      transparentPixel);
}

}  // namespace lumowatt::cairo
