#pragma once

#include <string>
#include <vector>

#include "base/failure.h"
#include "graphics/canvas.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Returns a picture of the item in a dark menu bar, with the report `lines` in a panel below. The
/// picture does not depend on the preferences. If `isSample`, a caption states that the values are
/// not a live reading.
Drawing snapshot(const Reading& reading, std::vector<std::string> lines, bool isSample);

/// Writes the snapshot of a reading and its details to a PNG file at `path`, with two pixels per
/// point. Replaces the contents of an existing file. Opens the file only after the picture has been
/// drawn and encoded.
Result<> writeSnapshot(const Reading& reading, const std::string& path, bool isSample,
                       BitmapFactory& bitmaps);

}  // namespace lumowatt
