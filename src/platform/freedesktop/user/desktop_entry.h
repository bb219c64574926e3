#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Files of groups with keys and values: desktop entries (freedesktop.org), and Plasma's settings.
namespace lumowatt::freedesktop {

/// A value of a group, with its escapes undone. Absent when it has none.
std::optional<std::string> entryValue(std::string_view entry, std::string_view key,
                                      std::string_view group = "Desktop Entry");

/// The program of an "Exec" value, with its quotes undone; empty when there is none.
std::string execProgram(std::string_view exec);

/// The path of a program as an "Exec" value, quoted and escaped as a file has it.
std::string execValue(std::string_view program);

/// A text as a value, escaped as a file has it.
std::string textValue(std::string_view text);

}  // namespace lumowatt::freedesktop
