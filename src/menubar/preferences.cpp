#include "menubar/preferences.h"

#include <cstddef>

namespace lumowatt {

namespace {

struct Row {
  std::string_view label;
  TitleExtras extras;
};

/// Labels and extras, indexed by the number of the mode.
constexpr std::array<Row, allModes.size()> rows{{
    {"Percent", {.power = false, .time = false}},
    {"Percent and battery power", {.power = true, .time = false}},
    {"Percent and time", {.power = false, .time = true}},
    {"Percent, power and time", {.power = true, .time = true}},
}};

const Row& row(Mode mode) { return rows[static_cast<std::size_t>(mode)]; }

}  // namespace

std::optional<Mode> modeOf(std::int64_t rawValue) {
  if (rawValue < 0 || rawValue >= static_cast<std::int64_t>(rows.size())) return std::nullopt;
  return static_cast<Mode>(rawValue);
}

std::string_view label(Mode mode) { return row(mode).label; }

TitleExtras titleExtras(Mode mode) { return row(mode).extras; }

}  // namespace lumowatt
