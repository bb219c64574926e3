#include "base/rounding.h"

namespace lumowatt {

std::optional<std::int64_t> roundedHalfAwayFromZero(double value) {
  // Does not use std::llround, which does not report an overflow and would be the only reason to
  // load the math library (libm).
  constexpr double limit = 9223372036854775808.0;  // 2^63, the first double that does not fit
  const bool fits = value >= -limit && value < limit;
  if (!fits) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(value);
  const double rest = value - static_cast<double>(whole);  // exact; 0 beyond 2^53
  if (rest >= 0.5) return whole + 1;
  if (rest <= -0.5) return whole - 1;
  return whole;
}

}  // namespace lumowatt
