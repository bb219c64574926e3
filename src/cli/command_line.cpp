#include "cli/command_line.h"

#include <algorithm>
#include <string_view>

namespace lumowatt {

namespace {

using Arguments = std::span<const char* const>;

/// Returns the position of the first argument that equals `name`, or the end.
Arguments::iterator findSwitch(Arguments arguments, std::string_view name) {
  return std::find_if(arguments.begin(), arguments.end(),
                      [name](const char* argument) { return argument == name; });
}

bool hasSwitch(Arguments arguments, std::string_view name) {
  return findSwitch(arguments, name) != arguments.end();
}

/// Returns the argument that follows the first occurrence of `name`; std::nullopt if there is no
/// such argument.
std::optional<std::string> switchValue(Arguments arguments, std::string_view name) {
  const auto position = findSwitch(arguments, name);
  if (position == arguments.end() || position + 1 == arguments.end()) return std::nullopt;
  return *(position + 1);
}

}  // namespace

Command parseCommandLine(std::span<const char* const> arguments) {
  if (hasSwitch(arguments, "--version")) return PrintVersion{};
  if (auto path = switchValue(arguments, "--snapshot")) {
    return WriteSnapshot{std::move(*path), switchValue(arguments, "--sample")};
  }
  if (hasSwitch(arguments, "--dump")) return PrintDump{};
  return ShowMenuBarItem{};
}

}  // namespace lumowatt
