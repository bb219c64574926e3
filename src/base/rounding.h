#pragma once

#include <cstdint>
#include <optional>

namespace lumowatt {

/// Rounds `value` to the nearest integer, halves away from zero. Returns std::nullopt if the result
/// does not fit into 64 signed bits or `value` is not a number.
std::optional<std::int64_t> roundedHalfAwayFromZero(double value);

}  // namespace lumowatt
