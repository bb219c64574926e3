#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/freedesktop/user/commands.h"

/// Starting other programs.
namespace lumowatt::freedesktop {

/// The path of an executable file: of one in $PATH by its name, or of one that is named by its
/// absolute path. Empty when there is none.
std::string findProgram(std::string_view name);

/// A child process that was started, which has to be waited for (`watchChild`).
struct StartedProgram {
  std::string name;  ///< as its command has it
  pid_t process;
};

/// Starts the first of the commands whose program is installed, without a shell and without waiting
/// for its end, and gives it `input` (64 KiB at most) to read. Its standard output is the file
/// `output`, or that of this process where the number is below 0. Absent when none could be
/// started.
std::optional<StartedProgram> startFirst(const std::vector<Command>& commands,
                                         std::string_view input = {}, int output = -1);

}  // namespace lumowatt::freedesktop
