#include "base/text.h"

namespace lumowatt {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view whiteSpace = " \t\n\v\f\r";
  const auto first = text.find_first_not_of(whiteSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

}  // namespace lumowatt
