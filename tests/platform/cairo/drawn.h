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
inline constexpr Pixel nothing{0, 0, 0, 0};

/// A bitmap after `draw`, at one pixel to a point unless told otherwise.
Picture drawn(Size size, const std::function<void(Canvas&)>& draw, double scale = 1.0,
              Appearance appearance = Appearance::light);

/// The same within an image that fills the bitmap.
Picture drawnInImage(Size size, bool flipped, const std::function<void(Canvas&)>& draw,
                     double scale = 1.0);

/// What the canvas says that a text measures.
Size measured(const AttributedString& text);

/// The smallest rectangle with all that is not transparent.
Rect ink(const Picture& picture);

}  // namespace lumowatt::cairo
