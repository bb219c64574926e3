#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/freedesktop/user/commands.h"

/// Functions that find and start other programs.
namespace lumowatt::freedesktop {

/// Returns the path of an executable file. `name` is the name of a file in $PATH or an absolute
/// path. Returns an empty path if the file is missing or not executable.
std::string findProgram(std::string_view name);

/// Child process that was started. The caller must wait for it (see `watchChild`).
struct StartedProgram {
  std::string name;  ///< first element of its command
  pid_t process;
};

/// Starts the first command whose program is installed. Uses no shell, and does not wait for the
/// program to exit. The program reads `input` (at most 64 KiB) from its standard input. Its
/// standard output is the file descriptor `output`, or that of this process if `output` is
/// negative. Returns nothing if no program could be started.
std::optional<StartedProgram> startFirst(const std::vector<Command>& commands,
                                         std::string_view input = {}, int output = -1);

}  // namespace lumowatt::freedesktop
