#pragma once

#include <string_view>
#include <vector>

#include "artwork/battery.h"
#include "graphics/symbol.h"

namespace lumowatt::artwork {

/// Returns the names of all artwork: every symbol, and `noBattery`.
inline std::vector<std::string_view> symbolNames() {
  std::vector<std::string_view> names(symbol::all.begin(), symbol::all.end());
  names.push_back(noBattery);
  return names;
}

}  // namespace lumowatt::artwork
