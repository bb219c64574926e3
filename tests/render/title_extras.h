#pragma once

#include "render/title.h"

/// Combinations of extras for the tests of titles and tiles.
namespace lumowatt {

inline constexpr TitleExtras noExtras{.power = false, .time = false};
inline constexpr TitleExtras powerExtra{.power = true, .time = false};
inline constexpr TitleExtras timeExtra{.power = false, .time = true};
inline constexpr TitleExtras allExtras{.power = true, .time = true};

}  // namespace lumowatt
