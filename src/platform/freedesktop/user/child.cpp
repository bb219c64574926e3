#include "platform/freedesktop/user/child.h"

#include <fcntl.h>
#include <sys/epoll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/freedesktop/user/programs.h"

namespace lumowatt::freedesktop {

namespace {

constexpr std::size_t outputLimit = 65536;

using ChildEnded = std::function<void(bool)>;

int tellEnd(sd_event_source* source, const siginfo_t* child, void* ended) {
  const auto& action = *static_cast<ChildEnded*>(ended);
  const bool isDetached = sd_event_source_get_floating(source) > 0;
  if (action) action(child->si_code == CLD_EXITED && child->si_status == 0);
  // A source without an owner is released with its child. The action may have released one that has
  // an owner, and libsystemd 262 aborts the process on any call for that.
  if (isDetached) sd_event_source_set_floating(source, 0);
  return 0;
}

void destroy(void* ended) { delete static_cast<ChildEnded*>(ended); }

/// Gives a source to its loop.
void detach(EventSource source) {
  sd_event_source_set_floating(source.get(), 1);
  sd_event_source_unref(source.release());
}

}  // namespace

void prepareToWatchChildren() {
  std::signal(SIGCHLD, SIG_DFL);  // where it is ignored, a child's end leaves no status
  sigset_t blocked{};
  ::sigemptyset(&blocked);
  ::sigaddset(&blocked, SIGCHLD);
  ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
}

EventSource watchChild(sd_event* loop, pid_t child, std::function<void(bool succeeded)> ended) {
  EventSource source;
  auto action = std::make_unique<ChildEnded>(std::move(ended));
  if (sd_event_add_child(loop, Out(source), child, WEXITED, tellEnd, action.get()) < 0) return {};
  sd_event_source_set_destroy_callback(source.get(), destroy);
  static_cast<void>(action.release());
  return source;
}

std::optional<std::string> startDetached(
    sd_event* loop, const std::vector<Command>& commands, std::string_view input,
    const std::function<void(const std::string& name, bool succeeded)>& ended) {
  const auto started = startFirst(commands, input);
  if (!started) return std::nullopt;
  EventSource watch =
      watchChild(loop, started->process, [ended, name = started->name](bool succeeded) {
        if (ended) ended(name, succeeded);
      });
  if (watch) detach(std::move(watch));
  return started->name;
}

std::unique_ptr<ReadProgram> ReadProgram::start(sd_event* loop,
                                                const std::vector<Command>& commands,
                                                std::string_view input, Ended ended) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return nullptr;
  const Descriptor writing(pipe[1]);
  std::unique_ptr<ReadProgram> program(new ReadProgram(pipe[0], std::move(ended)));
  ReadProgram* const self = program.get();
  ::fcntl(pipe[0], F_SETFL, O_NONBLOCK);
  if (sd_event_add_io(loop, Out(self->reading_), pipe[0], EPOLLIN, readable, self) < 0) {
    return nullptr;
  }
  const auto started = startFirst(commands, input, writing.number());
  if (!started) return nullptr;
  self->watch_ =
      watchChild(loop, started->process, [self](bool succeeded) { self->end(succeeded); });
  if (!self->watch_) {
    ::kill(started->process, SIGKILL);
    ::waitpid(started->process, nullptr, 0);
    return nullptr;
  }
  sd_event_source_set_child_process_own(self->watch_.get(), 1);
  return program;
}

int ReadProgram::readable(sd_event_source*, int, unsigned, void* program) {
  static_cast<ReadProgram*>(program)->read();
  return 0;
}

/// Reads what there is, and stops at the end. A program that writes too much finds its output
/// closed.
void ReadProgram::read() {
  std::array<char, 4096> buffer{};
  while (output_.isOpen()) {
    const ssize_t count = ::read(output_.number(), buffer.data(), buffer.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count > 0) text_.append(buffer.data(), static_cast<std::size_t>(count));
    if (count > 0 && text_.size() <= outputLimit) continue;
    reading_.reset();
    output_.close();
  }
}

void ReadProgram::end(bool succeeded) {
  read();
  const bool isWhole = succeeded && text_.size() <= outputLimit;
  const Ended ended = std::move(ended_);
  ended(isWhole ? std::optional(std::move(text_)) : std::nullopt);
}

}  // namespace lumowatt::freedesktop
