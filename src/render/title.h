#pragma once

#include <vector>

#include "graphics/attributed_string.h"
#include "graphics/tile.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Figures that a title shows beside the percentage.
struct TitleExtras {
  bool power;
  bool time;  ///< shown only if the reading contains the time
};

/// Title of the item, in the two forms that menu bars can show.
struct Title {
  AttributedString text;
  std::vector<Tile> tiles;  ///< for menu bars that show icons only
};

/// Returns the title as text: the percentage, a small arrow and the extras. All digits have the
/// same width, so that the width of the item remains stable. If `colored`, the arrow is green while
/// charging, orange while more than 15 W flow out of the battery, and otherwise in the secondary
/// text color. If not `colored`, the arrow is in the text color.
AttributedString titleText(const Reading& reading, TitleExtras extras, bool colored);

}  // namespace lumowatt
