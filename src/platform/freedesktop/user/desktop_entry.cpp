#include "platform/freedesktop/user/desktop_entry.h"

#include <algorithm>

#include "base/text.h"

namespace lumowatt::freedesktop {

namespace {

/// Letters that follow a backslash in an escape sequence, and the characters that they represent,
/// in the same order.
constexpr std::string_view escapeLetters = "sntr";
constexpr std::string_view escapedCharacters = " \n\t\r";

std::string unescaped(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool isEscape = value[i] == '\\' && i + 1 < value.size();
    if (isEscape) ++i;
    const std::size_t place = isEscape ? escapeLetters.find(value[i]) : std::string_view::npos;
    text += place == std::string_view::npos ? value[i] : escapedCharacters[place];
  }
  return text;
}

}  // namespace

std::optional<std::string> entryValue(std::string_view entry, std::string_view key,
                                      std::string_view group) {
  const std::string header = "[" + std::string(group) + "]";
  bool inGroup = false;
  while (!entry.empty()) {
    const std::size_t end = std::min(entry.find('\n'), entry.size());
    const std::string_view line = trimmed(entry.substr(0, end));
    entry.remove_prefix(std::min(end + 1, entry.size()));
    if (line.starts_with('[')) {
      inGroup = line == header;
    } else if (const std::size_t sign = line.find('='); inGroup && sign != std::string_view::npos) {
      if (trimmed(line.substr(0, sign)) == key) {
        return unescaped(trimmed(line.substr(sign + 1)));
      }
    }
  }
  return std::nullopt;
}

std::string execProgram(std::string_view exec) {
  std::string program;
  bool quoted = false;
  for (std::size_t i = 0; i < exec.size(); ++i) {
    const char letter = exec[i];
    const char next = i + 1 < exec.size() ? exec[i + 1] : '\0';
    const bool escapes = next != '\0' && ((quoted && letter == '\\') || exec.substr(i, 2) == "%%");
    if (letter == '"') {
      quoted = !quoted;
    } else if (letter == ' ' && !quoted) {
      if (!program.empty()) break;
    } else {
      program += escapes ? next : letter;
      if (escapes) ++i;
    }
  }
  return program;
}

std::string execValue(std::string_view program) {
  // In a quoted argument, four characters are escaped with a backslash. Percent signs are doubled.
  constexpr std::string_view special = R"("`$\)";
  std::string argument = "\"";
  for (const char letter : program) {
    if (special.find(letter) != std::string_view::npos) argument += '\\';
    argument += letter;
    if (letter == '%') argument += letter;
  }
  return textValue(argument + "\"");
}

std::string textValue(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t place = escapedCharacters.find(text[i]);
    const bool isInside = i > 0 && i + 1 < text.size();
    if (text[i] == '\\') {
      value += R"(\\)";
    } else if (place == std::string_view::npos || (text[i] == ' ' && isInside)) {
      value += text[i];
    } else {
      value += '\\';
      value += escapeLetters[place];
    }
  }
  return value;
}

}  // namespace lumowatt::freedesktop
