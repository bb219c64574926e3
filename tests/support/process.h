#pragma once

#include <string>
#include <utility>
#include <vector>

namespace lumowatt {

struct ProcessResult {
  int status;  ///< the exit status; 128 and the signal's number for one that a signal ended
  std::string output;
  std::string errors;
};

using Environment = std::vector<std::pair<std::string, std::string>>;

/// Runs a program to its end, with additions to this process's environment and no standard input.
ProcessResult runProcess(const std::vector<std::string>& command,
                         const Environment& environment = {});

}  // namespace lumowatt
