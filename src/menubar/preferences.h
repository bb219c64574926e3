#pragma once

#include "menubar/mode.h"

namespace lumowatt {

/// The user's preferences at one moment. Those that are not stored have the values here.
struct Preferences {
  Mode mode = Mode::percentPower;
  bool useColor = true;
  bool animate = true;
};

}  // namespace lumowatt
