#pragma once

#include <optional>
#include <string_view>

#include "graphics/path.h"

/// The project's own outlines of the few characters that a tile's text has, for sizes at which a
/// font's are blurred: upright, narrow, and of few curves.
namespace lumowatt::artwork {

/// How characters are drawn. Lengths are in the units of the picture.
struct Lettering {
  double height;  ///< of a digit
  double width;   ///< of a digit, without the gap to the next
  double gap;     ///< between characters
  double weight;  ///< the thickness of lines
};

/// A line of text as an area.
struct TextOutline {
  /// To be filled, overlaps and all (the nonzero rule). Its left end is at x = 0; y grows downward
  /// from 0 at the top of the digits to their height.
  Path area;
  double width;
};

/// The outline of a text of digits and "%", "−" (U+2212), "+", "-", ".", ":", "·", "W", "▲", "▼",
/// "•", blanks, and the letters of "No battery". All digits are equally wide, and so are the signs
/// and the arrows with the dot, whose shape depends on the height alone. Absent when there is
/// another character in it.
std::optional<TextOutline> outline(std::string_view text, const Lettering& lettering);

}  // namespace lumowatt::artwork
