#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/files.h"

namespace lumowatt {

struct ProcessResult {
  int status;  ///< the exit status, or 128 plus the signal's number if a signal ended the process
  std::string output;
  std::string errors;
};

using Environment = std::vector<std::pair<std::string, std::string>>;

/// A program that runs alongside the test, with no standard input and with the environment of this
/// process plus the given variables. Killed on destruction.
class Process {
 public:
  explicit Process(const std::vector<std::string>& command, const Environment& environment = {});
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  pid_t id() const { return id_; }
  bool isRunning();
  void send(int signal) const;

  /// Returns the resident set size in KiB.
  long residentMemory() const;

  /// Returns the number of open file descriptors.
  long openFiles() const;

  /// Returns what the program has written to its standard output so far.
  std::string output() const { return fileContents(folder_.path() / "output"); }

  /// Waits until the program exits.
  ProcessResult wait();

 private:
  TemporaryFolder folder_;
  pid_t id_ = 0;
  std::optional<int> status_;
};

/// Runs a program until it exits, with no standard input and with the environment of this process
/// plus the given variables.
ProcessResult runProcess(const std::vector<std::string>& command,
                         const Environment& environment = {});

}  // namespace lumowatt
