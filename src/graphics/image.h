#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "graphics/color.h"
#include "graphics/geometry.h"

namespace lumowatt {

class Canvas;

/// A vector picture: a size and a function that draws it, sharp at every scale.
struct Drawing {
  Size size;
  /// Whether y grows downward from the top left corner (else upward from the bottom left corner).
  bool flipped = false;
  /// Draws the picture into the rectangle, which starts at (0, 0) and has the size `size`.
  std::function<void(Canvas&, const Rect&)> draw;
};

/// A symbol of the platform, identified by one of the names in graphics/symbol.h.
struct Symbol {
  std::string name;
  std::optional<Color> tint = std::nullopt;
  /// Whether the platform draws the symbol in the color of the surrounding text, and redraws the
  /// symbol when that color changes.
  bool isTemplate = false;
  std::optional<double> pointSize = std::nullopt;  ///< if empty: the size that fits the control

  friend bool operator==(const Symbol&, const Symbol&) = default;
};

/// A picture. The platform renders it when it is displayed or drawn.
struct Image {
  std::variant<Drawing, Symbol> content;
  std::string accessibilityDescription = {};  ///< text for screen readers; may be empty
};

}  // namespace lumowatt
