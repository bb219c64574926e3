#pragma once

#include <optional>
#include <string>
#include <vector>

#include "graphics/color.h"
#include "graphics/font.h"

namespace lumowatt {

/// A stretch of text in one style.
struct TextRun {
  std::string text;  ///< UTF-8, on one line
  Font font;
  /// If empty: the text color of the control that displays the text, or black outside a control.
  std::optional<Color> color = std::nullopt;
  double baselineOffset = 0.0;  ///< points, upward

  friend bool operator==(const TextRun&, const TextRun&) = default;
};

/// One line of styled text: its runs, in order.
using AttributedString = std::vector<TextRun>;

}  // namespace lumowatt
