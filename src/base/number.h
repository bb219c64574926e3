#pragma once

#include <string>
#include <string_view>

namespace lumowatt {

// These functions format numbers with "." as the decimal separator in every locale.

/// Returns `value` with exactly `decimals` (0 to 9) digits after the point, like printf's "%.*f".
std::string fixed(double value, int decimals);

/// Returns `fixed` of `value` with a "+" in front if it has no "-", like printf's "%+.*f".
std::string fixedWithSign(double value, int decimals);

/// Returns the shortest decimal text that parses back to `value`, never with an exponent. A finite
/// number always has a fractional part: "31.5", "30.0".
std::string shortest(double value);

/// Returns the sign to print in front of a power or a rate: "−" (U+2212) for a value below zero,
/// else "+".
std::string_view sign(double value);

/// Returns `fixed` of the absolute value.
std::string magnitude(double value, int decimals);

}  // namespace lumowatt
