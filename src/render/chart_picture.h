#pragma once

#include <vector>

#include "graphics/image.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// The chart as a picture of its own: four times as large as in the menu, on a window's background,
/// with how long ago it begins and with the lowest and the highest percentage.
Drawing chartPicture(const std::vector<Sample>& samples, const Color& color);

}  // namespace lumowatt
