#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/failure.h"
#include "base/interface.h"
#include "graphics/attributed_string.h"
#include "graphics/color.h"
#include "graphics/geometry.h"
#include "graphics/image.h"
#include "graphics/path.h"

namespace lumowatt {

/// What is drawn on. Its space is that of the image being drawn: y grows upward, unless the image
/// is flipped.
class Canvas : public Interface {
 public:
  virtual void fill(const Rect& rect, const Color& color) = 0;
  virtual void fillRoundedRect(const Rect& rect, double radius, const Color& color) = 0;
  /// Fills what the path encloses with an opaque color, `opacity` from 0 (invisible) to 1.
  virtual void fillPath(const Path& path, const Color& color, double opacity) = 0;
  virtual void stroke(const Path& path, const Stroke& stroke, const Color& color) = 0;

  /// Draws upright text whose box, which is of `textSize`, has `origin` as its corner with the
  /// smallest coordinates: bottom left, in a flipped space top left.
  virtual void drawText(const AttributedString& text, Point origin) = 0;

  /// The width and line height of the text as `drawText` draws it.
  virtual Size textSize(const AttributedString& text) = 0;

  /// Draws the image upright into the rectangle. A drawing is stretched to fill it. How a symbol
  /// fills it, and whether its point size matters, is the platform's affair; one that the platform
  /// does not know is left out.
  virtual void drawImage(const Image& image, const Rect& rect) = 0;
};

/// A picture as pixels.
class Bitmap : public Interface {
 public:
  /// The pixels as a PNG file with 8 bits each of red, green, blue and alpha, and the resolution at
  /// which it has its size in points. Absent when it cannot be encoded.
  virtual std::optional<std::string> encodePng() = 0;
};

/// Where bitmaps come from.
class BitmapFactory : public Interface {
 public:
  /// The picture with `scale` pixels to a point, transparent where nothing is drawn, in the system
  /// colours for `appearance`. Fails when the platform cannot make such a bitmap; never null.
  virtual Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                               Appearance appearance) = 0;
};

}  // namespace lumowatt
