#pragma once

#include <vector>

#include "graphics/tile.h"
#include "render/title.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Returns the title as icons, for panels that show no text. The first tile shows the percentage.
/// The extras are the time and the power. If `extras` contains one of them, it is below the
/// percentage. If it contains both, they are in a second tile. The number of tiles depends on
/// `extras` alone, not on the reading.
///
/// The trend is an arrow below the percentage if nothing else is there. If the time is there, the
/// arrow replaces "%". If the power is there, its sign shows the trend, and there is no arrow. If
/// `colored`, the arrow and the power are green while charging, and orange while more than 15 W
/// flow out of the battery.
std::vector<Tile> tiles(const Reading& reading, TitleExtras extras, bool colored);

}  // namespace lumowatt
