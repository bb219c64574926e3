#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "render/title.h"

namespace lumowatt {

/// Display mode: the values that the title shows. Preferences store the number of an enumerator.
enum class Mode : std::int64_t { percent = 0, percentPower = 1, percentTime = 2, all = 3 };

inline constexpr std::array allModes{Mode::percent, Mode::percentPower, Mode::percentTime,
                                     Mode::all};

/// Returns the mode with the number `rawValue`; std::nullopt if the number is not in 0 to 3.
std::optional<Mode> modeOf(std::int64_t rawValue);

/// Returns the label of the mode in the menu.
std::string_view label(Mode mode);

/// Returns the figures that a title in this mode shows beside the percentage.
TitleExtras titleExtras(Mode mode);

/// The user's preferences at one moment. The initial values are the defaults.
struct Preferences {
  Mode mode = Mode::percentPower;
  bool useColor = true;
  bool animate = true;
};

}  // namespace lumowatt
