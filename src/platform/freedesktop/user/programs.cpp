#include "platform/freedesktop/user/programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/freedesktop/user/environment.h"

namespace lumowatt::freedesktop {

namespace {

bool isExecutableFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         ::access(path.c_str(), X_OK) == 0;
}

/// Attributes of a new process, with the signals that a program expects: none is ignored or
/// blocked.
class Attributes {
 public:
  Attributes() {
    sigset_t signals{};
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes_, &signals);
    for (const int signal : {SIGPIPE, SIGXFSZ, SIGCHLD}) ::sigaddset(&signals, signal);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  ~Attributes() { ::posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  static posix_spawnattr_t initialized() {
    posix_spawnattr_t attributes{};
    ::posix_spawnattr_init(&attributes);
    return attributes;
  }

  posix_spawnattr_t attributes_ = initialized();
};

/// File actions of a new process: `input` becomes its standard input, and `output` its standard
/// output unless `output` is negative.
class FileActions {
 public:
  FileActions(int input, int output) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    if (output >= 0) ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
  }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// Starts a program. Returns nothing on failure.
std::optional<pid_t> start(const std::string& program, const Command& command,
                           std::string_view input, int output) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return std::nullopt;
  const auto [readEnd, writeEnd] = pipe;
  // The pipe does not block. The write succeeds only if the whole input fits into its buffer.
  const bool isWritten =
      ::write(writeEnd, input.data(), input.size()) == static_cast<ssize_t>(input.size());
  ::close(writeEnd);
  ::fcntl(readEnd, F_SETFL, 0);

  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  pid_t child = 0;
  const bool started =
      isWritten && ::posix_spawn(&child, program.c_str(), FileActions(readEnd, output).get(),
                                 Attributes().get(), arguments.data(), ::environ) == 0;
  ::close(readEnd);
  return started ? std::optional(child) : std::nullopt;
}

}  // namespace

std::string findProgram(std::string_view name) {
  if (name.starts_with('/')) return isExecutableFile(std::string(name)) ? std::string(name) : "";
  if (name.empty() || name.find('/') != std::string_view::npos) return "";
  std::string folders = environmentVariable("PATH");
  folders += ':';
  std::size_t start = 0;
  for (std::size_t end = 0; (end = folders.find(':', start)) != std::string::npos;
       start = end + 1) {
    if (folders[start] != '/') continue;  // ignore the working directory and relative folders
    std::string path = folders.substr(start, end - start).append("/").append(name);
    if (isExecutableFile(path)) return path;
  }
  return "";
}

std::optional<StartedProgram> startFirst(const std::vector<Command>& commands,
                                         std::string_view input, int output) {
  for (const Command& command : commands) {
    const std::string program = findProgram(command.front());
    const auto process = program.empty() ? std::nullopt : start(program, command, input, output);
    if (process) return StartedProgram{command.front(), *process};
  }
  return std::nullopt;
}

}  // namespace lumowatt::freedesktop
