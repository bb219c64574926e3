#pragma once

#include <vector>

#include "graphics/tile.h"
#include "render/title.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Returns the title as icons, for panels that show no text. The first tile shows the percentage.
/// The extras are the time and the power: one is shown below the percentage, both are shown in a
/// second tile. The number of tiles depends on `extras` alone, not on the reading.
///
/// An arrow below the percentage shows the trend. If the time is below the percentage, the arrow
/// replaces "%". If the power is below the percentage, there is no arrow, because the sign of the
/// power shows the trend. If `colored`, the arrow and the power are green while charging, and
/// orange while more than 15 W flow out of the battery.
std::vector<Tile> tiles(const Reading& reading, TitleExtras extras, bool colored);

}  // namespace lumowatt
