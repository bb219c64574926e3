#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "render/title.h"

namespace lumowatt {

/// What the title in the menu bar shows. The numbers are those that preferences keep.
enum class Mode : std::int64_t { percent = 0, percentPower = 1, percentTime = 2, all = 3 };

inline constexpr std::array allModes{Mode::percent, Mode::percentPower, Mode::percentTime,
                                     Mode::all};

/// The mode of that number; absent for any number from outside 0 to 3.
std::optional<Mode> modeOf(std::int64_t rawValue);

/// The mode in the words of the menu.
std::string_view label(Mode mode);

/// What a title in that mode shows beside the percentage.
TitleExtras titleExtras(Mode mode);

/// The user's preferences at one moment. Those that are not stored have the values here.
struct Preferences {
  Mode mode = Mode::percentPower;
  bool useColor = true;
  bool animate = true;
};

}  // namespace lumowatt
