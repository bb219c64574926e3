#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "graphics/color.h"
#include "graphics/geometry.h"

namespace lumowatt {

class Canvas;

/// A picture as the routine that draws it, sharp at every scale.
struct Drawing {
  Size size;
  /// Whether y grows downward from the top left corner, not upward from the bottom left one.
  bool flipped = false;
  /// Draws the picture so that it fills the rectangle, which is of `size` and begins at (0, 0).
  std::function<void(Canvas&, const Rect&)> draw;
};

/// One of the platform's symbols, by its name (graphics/symbol.h).
struct Symbol {
  std::string name;
  std::optional<Color> tint = std::nullopt;
  /// A template has the colour of what surrounds it, and follows that when it changes.
  bool isTemplate = false;
  std::optional<double> pointSize = std::nullopt;  ///< absent: the size that fits where it is shown

  friend bool operator==(const Symbol&, const Symbol&) = default;
};

/// A picture as a value. The platform makes it at the moment it is shown or drawn.
struct Image {
  std::variant<Drawing, Symbol> content;
  std::string accessibilityDescription = {};  ///< what a screen reader says; empty for none
};

}  // namespace lumowatt
