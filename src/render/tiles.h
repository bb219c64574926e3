#pragma once

#include <vector>

#include "graphics/tile.h"
#include "render/title.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// The title as icons, for panels that show no text: the percentage alone, or over one of the
/// extras, or beside a second icon of both. They are as many for a title's extras, whatever the
/// reading. The trend is an arrow unless a figure's sign tells it: below the percentage alone, in
/// the place of "%" over the time. With `colored`, what tells it is green while charging, and
/// orange beyond 15 W out of the battery.
std::vector<Tile> tiles(const Reading& reading, TitleExtras extras, bool colored);

}  // namespace lumowatt
