#pragma once

#include <cstdint>
#include <optional>

namespace lumowatt {

/// `value` as the nearest integer, halves away from zero. Absent when the result does not fit 64
/// signed bits or `value` is not a number.
std::optional<std::int64_t> roundedHalfAwayFromZero(double value);

}  // namespace lumowatt
