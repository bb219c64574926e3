#pragma once

#include <string>
#include <vector>

#include "base/failure.h"
#include "graphics/canvas.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// A picture of the item in a dark menu bar, with the report `lines` in a panel below. It is the
/// same whatever the preferences are. `sample` adds a caption that says that the values are not
/// those of a battery.
Drawing snapshot(const Reading& reading, std::vector<std::string> lines, bool sample);

/// Draws the snapshot of a reading and its details, two pixels to a point, into a PNG file at the
/// path `to`, replacing what is there. The file is touched only when the picture is complete.
Result<> writeSnapshot(const Reading& reading, const std::string& to, bool sample,
                       BitmapFactory& bitmaps);

}  // namespace lumowatt
