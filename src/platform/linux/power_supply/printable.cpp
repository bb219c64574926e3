#include "platform/linux/power_supply/printable.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace lumowatt {

namespace {

struct Character {
  char32_t code;
  std::size_t length;  // in bytes; 0 when they are no UTF-8
};

/// The character at the start of `bytes`, which is not empty (RFC 3629).
Character firstCharacter(std::string_view bytes) {
  const auto byte = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return {0, 0};
  char32_t code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return {0, 0};
    code = code << 6U | (byte(i) & 0x3FU);
  }
  constexpr char32_t leastOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < leastOfLength[length] || surrogate || code > 0x10FFFF) return {0, 0};
  return {code, length};
}

struct Range {
  char32_t first;
  char32_t last;
};

// Controls, and what only steers the text around it.
constexpr Range invisible[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},        {0x200B, 0x200F},
    {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF},    {0xFFF0, 0xFFFB},
    {0xFDD0, 0xFDEF}, {0xE000, 0xF8FF}, {0xE0000, 0x10FFFF},
};

bool isVisible(char32_t code) {
  const bool isNoncharacter = (code & 0xFFFEU) == 0xFFFE;  // the last two of each plane
  return !isNoncharacter &&
         std::none_of(std::begin(invisible), std::end(invisible), [code](const Range& range) {
           return code >= range.first && code <= range.last;
         });
}

bool isBlank(char32_t code) { return code == ' ' || (code >= '\t' && code <= '\r'); }

}  // namespace

std::string printable(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const auto [code, length] = firstCharacter(bytes);
    if (isBlank(code)) {
      text += ' ';
    } else if (length > 0 && isVisible(code)) {
      text += bytes.substr(0, length);
    }
    bytes.remove_prefix(length > 0 ? length : 1);
  }
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace lumowatt
