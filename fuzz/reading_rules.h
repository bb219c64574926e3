#pragma once

#include "telemetry/reading.h"

namespace lumowatt::fuzz {

/// Checks the rules that hold for every reading: for its dump, report, title and tiles. Aborts the
/// process if one of them is broken.
void requireText(const Reading& reading);

}  // namespace lumowatt::fuzz
