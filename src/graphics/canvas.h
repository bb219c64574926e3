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

/// A drawing surface. Its coordinates are those of the image being drawn: y grows upward, unless
/// the image is flipped.
class Canvas : public Interface {
 public:
  virtual void fill(const Rect& rect, const Color& color) = 0;
  virtual void fillRoundedRect(const Rect& rect, double radius, const Color& color) = 0;
  /// Fills the area that the path encloses. `color` must be opaque. `opacity` ranges from 0
  /// (invisible) to 1.
  virtual void fillPath(const Path& path, const Color& color, double opacity) = 0;
  virtual void stroke(const Path& path, const Stroke& stroke, const Color& color) = 0;

  /// Draws upright text in a box of the size `textSize`. `origin` is the corner of the box with the
  /// smallest coordinates: bottom left, or top left if y grows downward.
  virtual void drawText(const AttributedString& text, Point origin) = 0;

  /// Returns the width and the line height of the text that `drawText` draws.
  virtual Size textSize(const AttributedString& text) = 0;

  /// Draws the image upright into the rectangle. A `Drawing` is stretched to fill the rectangle.
  /// How a `Symbol` fills the rectangle, and whether its point size matters, depends on the
  /// platform. A symbol that is unknown to the platform is not drawn.
  virtual void drawImage(const Image& image, const Rect& rect) = 0;
};

/// A raster image.
class Bitmap : public Interface {
 public:
  /// Encodes the pixels as a PNG file with 8 bits each of red, green, blue and alpha. The
  /// resolution in the file is the scale of the bitmap, so that viewers can show the picture in its
  /// size in points. Returns std::nullopt if encoding fails.
  virtual std::optional<std::string> encodePng() = 0;
};

/// Renders drawings as bitmaps.
class BitmapFactory : public Interface {
 public:
  /// Renders the picture with `scale` pixels per point on a transparent background, in the system
  /// colors of `appearance`. Fails if the platform cannot create the bitmap. Never returns null.
  virtual Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                               Appearance appearance) = 0;
};

}  // namespace lumowatt
