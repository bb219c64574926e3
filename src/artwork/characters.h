#pragma once

#include <optional>
#include <string_view>

#include "graphics/path.h"

/// Outlines of the few characters that occur in tiles, for sizes at which the glyphs of fonts are
/// blurred. They are upright and narrow, and have few curves.
namespace lumowatt::artwork {

/// Dimensions of drawn characters, in the units of the picture.
struct Lettering {
  double height;  ///< of a digit
  double width;   ///< of a digit, without the gap after it
  double gap;     ///< between characters
  double weight;  ///< thickness of lines
};

/// The outline of a line of text.
struct TextOutline {
  /// The area to fill by the nonzero rule; figures may overlap. The text starts at x = 0. y grows
  /// downward and is 0 at the top of the digits.
  Path area;
  double width;
};

/// Returns the outline of a text of digits, "%", "−" (U+2212), "+", "-", ".", ":", "·", "W", "▲",
/// "▼", "•", spaces, and the letters of "No battery". All digits have the same width, and so have
/// all signs and all marks ("▲", "▼", "•"). The width and the shape of a mark depend only on the
/// height of the lettering. Returns std::nullopt if the text contains any other character.
std::optional<TextOutline> outline(std::string_view text, const Lettering& lettering);

}  // namespace lumowatt::artwork
