#include "platform/freedesktop/user/programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
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

/// The attributes of a new process: the signals as a program expects them, none ignored or blocked.
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
  static posix_spawnattr_t made() {
    posix_spawnattr_t attributes{};
    ::posix_spawnattr_init(&attributes);
    return attributes;
  }

  posix_spawnattr_t attributes_ = made();
};

/// The standard input of a new process: the reading end of a pipe.
class FileActions {
 public:
  explicit FileActions(int input) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
  }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

bool start(const std::string& program, const Command& command, std::string_view input) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return false;
  const auto [reading, writing] = pipe;
  // The input is small enough for the pipe to hold it, so that nobody has to wait.
  const bool held =
      ::write(writing, input.data(), input.size()) == static_cast<ssize_t>(input.size());
  ::close(writing);
  ::fcntl(reading, F_SETFL, 0);

  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  pid_t child = 0;
  const bool started = held && ::posix_spawn(&child, program.c_str(), FileActions(reading).get(),
                                             Attributes().get(), arguments.data(), ::environ) == 0;
  ::close(reading);
  return started;
}

/// Whether one of the colon-separated names in $XDG_CURRENT_DESKTOP is `name`.
bool isCurrentDesktop(const std::string& name) {
  return (":" + environmentVariable("XDG_CURRENT_DESKTOP") + ":").find(":" + name + ":") !=
         std::string::npos;
}

/// A desktop by its name in $XDG_CURRENT_DESKTOP, and its panels of power settings.
struct DesktopPanel {
  std::string name;
  std::vector<Command> commands;
};

}  // namespace

std::string findProgram(std::string_view name) {
  if (name.starts_with('/')) return isExecutableFile(std::string(name)) ? std::string(name) : "";
  if (name.empty() || name.find('/') != std::string_view::npos) return "";
  std::string folders = environmentVariable("PATH");
  folders += ':';
  std::size_t start = 0;
  for (std::size_t end = 0; (end = folders.find(':', start)) != std::string::npos;
       start = end + 1) {
    if (folders[start] != '/') continue;  // the working directory is nowhere to look
    std::string path = folders.substr(start, end - start).append("/").append(name);
    if (isExecutableFile(path)) return path;
  }
  return "";
}

bool startFirst(const std::vector<Command>& commands, std::string_view input) {
  return std::ranges::any_of(commands, [input](const Command& command) {
    const std::string program = findProgram(command.front());
    return !program.empty() && start(program, command, input);
  });
}

std::vector<Command> clipboardCommands() {
  std::vector<Command> commands{{"wl-copy", "--type", "text/plain;charset=utf-8"},
                                {"xclip", "-selection", "clipboard"}};
  if (environmentVariable("WAYLAND_DISPLAY").empty()) commands.erase(commands.begin());
  return commands;
}

std::vector<Command> bellCommands() {
  const std::string file = "/usr/share/sounds/freedesktop/stereo/bell.oga";
  return {{"canberra-gtk-play", "--id", "bell"}, {"pw-play", file}, {"paplay", file}};
}

std::vector<Command> pictureViewerCommands(const std::string& path) {
  return {{"xdg-open", path}, {"gio", "open", path}, {"exo-open", path}};
}

std::vector<Command> batterySettingsCommands() {
  std::vector<DesktopPanel> panels{
      {"GNOME", {{"gnome-control-center", "power"}}},
      {"KDE",
       {{"systemsettings", "kcm_powerdevilprofilesconfig"},
        {"systemsettings5", "powerdevilprofilesconfig"}}},
      {"XFCE", {{"xfce4-power-manager-settings"}}},
      {"MATE", {{"mate-power-preferences"}}},
      {"X-Cinnamon", {{"cinnamon-settings", "power"}}},
      {"LXQt", {{"lxqt-config-powermanagement"}}},
  };
  std::stable_partition(panels.begin(), panels.end(),
                        [](const DesktopPanel& panel) { return isCurrentDesktop(panel.name); });
  std::vector<Command> commands;
  for (const DesktopPanel& panel : panels) {
    commands.insert(commands.end(), panel.commands.begin(), panel.commands.end());
  }
  return commands;
}

}  // namespace lumowatt::freedesktop
