#pragma once

#include "telemetry/reading.h"

namespace lumowatt::fuzz {

/// Requires what is promised of every reading's text: the dump, the report, the title, its tiles.
void requireText(const Reading& reading);

}  // namespace lumowatt::fuzz
