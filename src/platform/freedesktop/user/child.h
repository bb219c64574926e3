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

/// Child processes, watched on the event loop until they end.
namespace lumowatt::freedesktop {

/// Blocks SIGCHLD in this process, which sd-event asks for before it watches a child.
void prepareToWatchChildren();

/// Calls `ended` when a child process has ended, with whether its exit status is 0. Nothing of the
/// child stays then. `ended` may release the source; released earlier, it is not called. Null when
/// the child cannot be watched.
EventSource watchChild(sd_event* loop, pid_t child, std::function<void(bool succeeded)> ended);

/// Starts the first of the commands as `startFirst` does, and lets it run for as long as it likes.
/// `ended` is called as long as the loop runs, unless the program cannot be watched. Returns the
/// program's name, absent when none could be started.
std::optional<std::string> startDetached(
    sd_event* loop, const std::vector<Command>& commands, std::string_view input = {},
    const std::function<void(const std::string& name, bool succeeded)>& ended = {});

/// A program whose standard output is read. It is killed when this object goes before it has ended.
class ReadProgram {
 public:
  /// Called once, when the program has ended, with what it wrote: absent when it failed, or wrote
  /// more than 64 KiB. It may destroy the `ReadProgram`.
  using Ended = std::function<void(std::optional<std::string> output)>;

  /// Starts the first of the commands as `startFirst` does. Null when none could be started.
  static std::unique_ptr<ReadProgram> start(sd_event* loop, const std::vector<Command>& commands,
                                            std::string_view input, Ended ended);

 private:
  ReadProgram(int output, Ended ended) : ended_(std::move(ended)), output_(output) {}

  static int readable(sd_event_source* source, int file, unsigned events, void* program);
  void read();
  void end(bool succeeded);

  Ended ended_;
  Descriptor output_;
  std::string text_;
  EventSource reading_;
  EventSource watch_;
};

}  // namespace lumowatt::freedesktop
