#pragma once

#include <vector>

#include "graphics/attributed_string.h"
#include "graphics/tile.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// What a title shows beside the percentage.
struct TitleExtras {
  bool power;
  bool time;  ///< where there is an estimate
};

/// The title of the item, in each form in which a menu bar may show it.
struct Title {
  AttributedString text;
  std::vector<Tile> tiles;  ///< for menu bars that show icons alone
};

/// The title as text: the percentage, a small arrow and the extras. Digits are equally
/// wide, so that the item keeps its width. With `colored` the arrow is green while charging, orange
/// beyond 15 W out of the battery, and else faint; without, it has the color of text.
AttributedString titleText(const Reading& reading, TitleExtras extras, bool colored);

}  // namespace lumowatt
