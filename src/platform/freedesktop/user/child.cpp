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

using ChildExitHandler = std::function<void(bool)>;

int notifyExit(sd_event_source* source, const siginfo_t* child, void* handler) {
  const auto& onExit = *static_cast<ChildExitHandler*>(handler);
  const bool isDetached = sd_event_source_get_floating(source) > 0;
  if (onExit) onExit(child->si_code == CLD_EXITED && child->si_status == 0);
  // Release a detached source. Do not access other sources: `onExit` may have released them, and
  // libsystemd 262 aborts the process on any access to a released source.
  if (isDetached) sd_event_source_set_floating(source, 0);
  return 0;
}

void destroyHandler(void* handler) { delete static_cast<ChildExitHandler*>(handler); }

/// Transfers ownership of a source to its event loop.
void detach(EventSource source) {
  sd_event_source_set_floating(source.get(), 1);
  sd_event_source_unref(source.release());
}

}  // namespace

void prepareToWatchChildren() {
  std::signal(SIGCHLD, SIG_DFL);  // if SIGCHLD is ignored, children leave no exit status
  sigset_t blocked{};
  ::sigemptyset(&blocked);
  ::sigaddset(&blocked, SIGCHLD);
  ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
}

EventSource watchChild(sd_event* loop, pid_t child, std::function<void(bool succeeded)> onExit) {
  EventSource source;
  auto handler = std::make_unique<ChildExitHandler>(std::move(onExit));
  if (sd_event_add_child(loop, Out(source), child, WEXITED, notifyExit, handler.get()) < 0)
    return {};
  sd_event_source_set_destroy_callback(source.get(), destroyHandler);
  static_cast<void>(handler.release());
  return source;
}

std::optional<std::string> startDetached(
    sd_event* loop, const std::vector<Command>& commands, std::string_view input,
    const std::function<void(const std::string& name, bool succeeded)>& onExit) {
  const auto started = startFirst(commands, input);
  if (!started) return std::nullopt;
  EventSource watch =
      watchChild(loop, started->process, [onExit, name = started->name](bool succeeded) {
        if (onExit) onExit(name, succeeded);
      });
  if (watch) detach(std::move(watch));
  return started->name;
}

std::unique_ptr<CapturedProgram> CapturedProgram::start(sd_event* loop,
                                                        const std::vector<Command>& commands,
                                                        std::string_view input,
                                                        ExitHandler onExit) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return nullptr;
  const Descriptor writeEnd(pipe[1]);
  std::unique_ptr<CapturedProgram> program(new CapturedProgram(pipe[0], std::move(onExit)));
  CapturedProgram* const self = program.get();
  ::fcntl(pipe[0], F_SETFL, O_NONBLOCK);
  if (sd_event_add_io(loop, Out(self->outputSource_), pipe[0], EPOLLIN, onReadable, self) < 0) {
    return nullptr;
  }
  const auto started = startFirst(commands, input, writeEnd.number());
  if (!started) return nullptr;
  self->exitSource_ =
      watchChild(loop, started->process, [self](bool succeeded) { self->handleExit(succeeded); });
  if (!self->exitSource_) {
    ::kill(started->process, SIGKILL);
    ::waitpid(started->process, nullptr, 0);
    return nullptr;
  }
  sd_event_source_set_child_process_own(self->exitSource_.get(), 1);
  return program;
}

int CapturedProgram::onReadable(sd_event_source*, int, unsigned, void* program) {
  static_cast<CapturedProgram*>(program)->read();
  return 0;
}

/// Reads the available output. Closes the pipe at the end of the output, or if the output exceeds
/// the limit.
void CapturedProgram::read() {
  std::array<char, 4096> buffer{};
  while (output_.isOpen()) {
    const ssize_t count = ::read(output_.number(), buffer.data(), buffer.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count > 0) text_.append(buffer.data(), static_cast<std::size_t>(count));
    if (count > 0 && text_.size() <= outputLimit) continue;
    outputSource_.reset();
    output_.close();
  }
}

void CapturedProgram::handleExit(bool succeeded) {
  read();
  const bool isComplete = succeeded && text_.size() <= outputLimit;
  const ExitHandler onExit = std::move(onExit_);
  onExit(isComplete ? std::optional(std::move(text_)) : std::nullopt);
}

}  // namespace lumowatt::freedesktop
