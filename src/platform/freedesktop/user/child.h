#pragma once

#include <sys/types.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/user/commands.h"
#include "platform/posix/descriptor.h"

/// Child processes that the event loop watches until they exit.
namespace lumowatt::freedesktop {

/// Blocks SIGCHLD in this process, as sd-event requires for watching a child. Resets the
/// action of SIGCHLD to the default.
void prepareToWatchChildren();

/// Calls `onExit` when a child process has exited, and reaps the child. `succeeded` is true if its
/// exit status is 0. `onExit` may release the returned source. If the source is released earlier,
/// `onExit` is not called. Returns null if the child cannot be watched.
EventSource watchChild(sd_event* loop, pid_t child, std::function<void(bool succeeded)> onExit);

/// Starts the first available command, as `startFirst` does. The program may run for any length of
/// time. Calls `onExit` when the program exits. Does not call `onExit` if the loop no longer runs
/// then, or if the program cannot be watched. Returns the name of the program. Returns nothing if
/// no program could be started.
std::optional<std::string> startDetached(
    sd_event* loop, const std::vector<Command>& commands, std::string_view input = {},
    const std::function<void(const std::string& name, bool succeeded)>& onExit = {});

/// Child process whose standard output is captured. Killed on destruction if it still runs.
class CapturedProgram {
 public:
  /// Called once, when the program has exited. `output` is std::nullopt if the program failed or
  /// wrote more than 64 KiB. The handler may destroy the `CapturedProgram`.
  using ExitHandler = std::function<void(std::optional<std::string> output)>;

  /// Starts the first available command, as `startFirst` does. Returns null if no program could be
  /// started.
  static std::unique_ptr<CapturedProgram> start(sd_event* loop,
                                                const std::vector<Command>& commands,
                                                std::string_view input, ExitHandler onExit);

 private:
  CapturedProgram(int output, ExitHandler onExit) : onExit_(std::move(onExit)), output_(output) {}

  static int onReadable(sd_event_source* source, int file, unsigned events, void* program);
  void read();
  void handleExit(bool succeeded);

  ExitHandler onExit_;
  Descriptor output_;
  std::string text_;
  EventSource outputSource_;
  EventSource exitSource_;
};

}  // namespace lumowatt::freedesktop
