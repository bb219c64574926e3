#pragma once

#include <string>
#include <string_view>

namespace lumowatt {

/// Numbers as text, with "." as the decimal separator whatever the locale.

/// `value` with exactly `decimals` (0 to 9) digits after the point, as printf's "%.*f".
std::string fixed(double value, int decimals);

/// The same with "+" in front of what has no "-", as printf's "%+.*f".
std::string fixedWithSign(double value, int decimals);

/// The shortest decimal text that reads back as `value`, never in exponent form and always with a
/// fractional part: "31.5", "30.0".
std::string shortest(double value);

/// What stands before the magnitude of a signed power or rate: "−" (U+2212) for a value below
/// zero, else "+".
std::string_view sign(double value);

/// `fixed` of the absolute value.
std::string magnitude(double value, int decimals);

}  // namespace lumowatt
