#include "base/number.h"

#include <charconv>
#include <cmath>

namespace lumowatt {

namespace {

// The sign, "0." and 324 decimals of a negative number next to zero in its shortest form. The
// lowest number with nine decimals has 320 characters.
constexpr int longestNumber = 327;

}  // namespace

std::string fixed(double value, int decimals) {
  char text[longestNumber];
  const auto end =
      std::to_chars(text, text + longestNumber, value, std::chars_format::fixed, decimals).ptr;
  return {text, end};
}

std::string fixedWithSign(double value, int decimals) {
  std::string text = fixed(value, decimals);
  if (text.front() != '-') text.insert(text.begin(), '+');
  return text;
}

std::string shortest(double value) {
  char text[longestNumber];
  const auto end = std::to_chars(text, text + longestNumber, value, std::chars_format::fixed).ptr;
  std::string result(text, end);
  if (std::isfinite(value) && result.find('.') == std::string::npos) result += ".0";
  return result;
}

std::string_view sign(double value) { return value < 0 ? "−" : "+"; }

std::string magnitude(double value, int decimals) { return fixed(std::fabs(value), decimals); }

}  // namespace lumowatt
