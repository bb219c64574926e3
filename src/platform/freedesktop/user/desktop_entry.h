#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Files that contain groups of keys and values: desktop entries (freedesktop.org) and Plasma's
/// settings.
namespace lumowatt::freedesktop {

/// Returns the unescaped value of a key in a group. Returns std::nullopt if the group has no such
/// key.
std::optional<std::string> entryValue(std::string_view entry, std::string_view key,
                                      std::string_view group = "Desktop Entry");

/// Returns the unquoted program of an "Exec" value; empty if the value has no program.
std::string execProgram(std::string_view exec);

/// Formats the path of a program as an "Exec" value, quoted and escaped for the file.
std::string execValue(std::string_view program);

/// Formats a text as a value, escaped for the file.
std::string textValue(std::string_view text);

}  // namespace lumowatt::freedesktop
