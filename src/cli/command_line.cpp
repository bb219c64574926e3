#include "cli/command_line.h"

#include <algorithm>
#include <string_view>

namespace lumowatt {

namespace {

using Arguments = std::span<const char* const>;

/// The first argument that equals `name`, or the end.
Arguments::iterator findSwitch(Arguments arguments, std::string_view name) {
  return std::find_if(arguments.begin(), arguments.end(),
                      [name](const char* argument) { return argument == name; });
}

bool hasSwitch(Arguments arguments, std::string_view name) {
  return findSwitch(arguments, name) != arguments.end();
}

/// The argument after the first that equals `name`; absent when there is none.
std::optional<std::string> switchValue(Arguments arguments, std::string_view name) {
  const auto found = findSwitch(arguments, name);
  if (found == arguments.end() || found + 1 == arguments.end()) return std::nullopt;
  return *(found + 1);
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
