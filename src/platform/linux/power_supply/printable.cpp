#include "platform/linux/power_supply/printable.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace lumowatt {

namespace {

struct Character {
  char32_t code;
  std::size_t length;  // in bytes
};

/// Result for a byte that begins no valid character: a control character, which is dropped.
constexpr Character notUtf8{U'\0', 1};

/// Decodes the first UTF-8 character (RFC 3629) of `bytes`, which must not be empty. Accepts
/// surrogates and code points above U+10FFFF, which `isVisible` rejects.
Character firstCharacter(std::string_view bytes) {
  const auto byte = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byte(0);
  if ((lead & 0x80U) == 0) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return notUtf8;
  const bool isOverlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
  if (isOverlong) return notUtf8;
  char32_t code = lead & (0x1FU >> (length - 2));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return notUtf8;
    code = code << 6U | (byte(i) & 0x3FU);
  }
  return {code, length};
}

struct Range {
  char32_t first;
  char32_t last;
};

// Control and format characters, line separators, surrogates, private-use characters,
// noncharacters.
constexpr Range invisible[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x200B, 0x200F}, {0x2028, 0x202E},
    {0x2060, 0x206F}, {0xD800, 0xF8FF}, {0xFDD0, 0xFDEF}, {0xFEFF, 0xFEFF}, {0xFFF0, 0xFFFB},
};
constexpr char32_t firstBeyondText = 0xE0000;  // tags, then private-use planes

bool isVisible(char32_t code) {
  const bool isNoncharacter = (code & 0xFFFEU) == 0xFFFE;  // the last two code points of each plane
  return code < firstBeyondText && !isNoncharacter &&
         std::none_of(std::begin(invisible), std::end(invisible), [code](const Range& range) {
           return code >= range.first && code <= range.last;
         });
}

/// Returns whether the character is an ASCII tab or line break, including VT and FF.
bool isTabOrLineBreak(char32_t code) { return code >= '\t' && code <= '\r'; }

}  // namespace

std::string printable(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const auto [code, length] = firstCharacter(bytes);
    if (isTabOrLineBreak(code)) {
      text += ' ';
    } else if (isVisible(code)) {
      text += bytes.substr(0, length);
    }
    bytes.remove_prefix(length);
  }
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace lumowatt
