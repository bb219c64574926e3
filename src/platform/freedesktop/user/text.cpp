#include "platform/freedesktop/user/text.h"

#include <cstdlib>

namespace lumowatt::freedesktop {

std::string environmentVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t start = text.find_first_not_of(blanks);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

}  // namespace lumowatt::freedesktop
