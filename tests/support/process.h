#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/files.h"

namespace lumowatt {

struct ProcessResult {
  int status;  ///< the exit status; 128 and the signal's number for one that a signal ended
  std::string output;
  std::string errors;
};

using Environment = std::vector<std::pair<std::string, std::string>>;

/// A program that runs beside the test, with additions to this process's environment and no
/// standard input. At the end of its life it is killed.
class Process {
 public:
  explicit Process(const std::vector<std::string>& command, const Environment& environment = {});
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  pid_t id() const { return id_; }
  bool isRunning();
  void send(int signal) const;

  /// The memory that it holds, in KiB, and how many files it has open.
  long residentMemory() const;
  long openFiles() const;

  /// What it has written to its standard output so far.
  std::string output() const { return fileContents(folder_.path() / "output"); }

  /// Waits for its end.
  ProcessResult wait();

 private:
  TemporaryFolder folder_;
  pid_t id_ = 0;
  std::optional<int> status_;
};

/// Runs a program to its end, with additions to this process's environment and no standard input.
ProcessResult runProcess(const std::vector<std::string>& command,
                         const Environment& environment = {});

}  // namespace lumowatt
