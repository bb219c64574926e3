#pragma once

#include <functional>

#include "graphics/canvas.h"
#include "support/picture.h"

namespace lumowatt::cairo {

inline constexpr Color red = CalibratedRgb{1.0, 0.0, 0.0};
inline constexpr Color blue = CalibratedRgb{0.0, 0.0, 1.0};
inline constexpr Color black = CalibratedWhite{0.0};
inline constexpr Pixel redPixel{255, 0, 0, 255};
inline constexpr Pixel bluePixel{0, 0, 255, 255};
inline constexpr Pixel transparentPixel{0, 0, 0, 0};

/// Returns the pixels of a bitmap after `draw`. `scale` is the number of pixels per point.
Picture drawn(Size size, const std::function<void(Canvas&)>& draw, double scale = 1.0,
              Appearance appearance = Appearance::light);

/// Returns the pixels of a bitmap after `draw` has drawn into an image that fills the bitmap.
Picture drawnInImage(Size size, bool flipped, const std::function<void(Canvas&)>& draw,
                     double scale = 1.0);

/// Returns the size of a text as measured by the canvas.
Size measureText(const AttributedString& text);

/// Returns the smallest rectangle that contains all pixels that are not transparent.
Rect inkBounds(const Picture& picture);

}  // namespace lumowatt::cairo
