#pragma once

#include "render/title.h"

/// What a title can show beside the percent, as the tests of titles and tiles call it.
namespace lumowatt {

inline constexpr TitleExtras nothing{.power = false, .time = false};
inline constexpr TitleExtras power{.power = true, .time = false};
inline constexpr TitleExtras time{.power = false, .time = true};
inline constexpr TitleExtras all{.power = true, .time = true};

}  // namespace lumowatt
