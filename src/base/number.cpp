#include "base/number.h"

#include <charconv>
#include <cmath>

namespace lumowatt {

namespace {

// The longest text is a negative number close to zero in its shortest form: the sign, "0." and 324
// decimals. The lowest number with nine decimals has only 320 characters.
constexpr int maxLength = 327;

}  // namespace

std::string fixed(double value, int decimals) {
  char text[maxLength];
  const auto end =
      std::to_chars(text, text + maxLength, value, std::chars_format::fixed, decimals).ptr;
  return {text, end};
}

std::string fixedWithSign(double value, int decimals) {
  std::string text = fixed(value, decimals);
  if (text.front() != '-') text.insert(text.begin(), '+');
  return text;
}

std::string shortest(double value) {
  char text[maxLength];
  const auto end = std::to_chars(text, text + maxLength, value, std::chars_format::fixed).ptr;
  std::string result(text, end);
  if (std::isfinite(value) && result.find('.') == std::string::npos) result += ".0";
  return result;
}

std::string_view sign(double value) { return value < 0 ? "−" : "+"; }

std::string magnitude(double value, int decimals) { return fixed(std::fabs(value), decimals); }

}  // namespace lumowatt
