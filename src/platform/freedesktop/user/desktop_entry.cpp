#include "platform/freedesktop/user/desktop_entry.h"

#include <algorithm>

#include "base/text.h"

namespace lumowatt::freedesktop {

namespace {

std::string unescaped(std::string_view value) {
  constexpr std::string_view escaped = "sntr";
  constexpr std::string_view meant = " \n\t\r";
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool isEscape = value[i] == '\\' && i + 1 < value.size();
    if (isEscape) ++i;
    const std::size_t place = isEscape ? escaped.find(value[i]) : std::string_view::npos;
    text += place == std::string_view::npos ? value[i] : meant[place];
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
  // First the argument is quoted, in which four characters have a backslash; then the value is
  // written, in which each backslash is two. A percent sign is two everywhere.
  std::string value = "\"";
  for (const char letter : program) {
    if (letter == '\\') {
      value += R"(\\\\)";
    } else if (letter == '"' || letter == '`' || letter == '$') {
      value += R"(\\)";
      value += letter;
    } else if (letter == '%') {
      value += "%%";
    } else {
      value += letter;
    }
  }
  return value + "\"";
}

}  // namespace lumowatt::freedesktop
