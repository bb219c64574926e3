// Measures resident programs that monitor the battery:
//
//   resident SECONDS PANEL CHARGE COMMAND...
//
// This program is the panel of the session. Its process name is PANEL, because items recognize
// panels by this name. Each command is one argument.
//
// First starts the first command several times and prints the median time until the command
// registers its item. Then starts all commands and measures them simultaneously for SECONDS. Then
// runs CHARGE, a shell command that simulates plugging in the charger, and measures the commands
// again. The ratios to the first command are more reliable than the absolute values. Prints the
// results as Markdown tables.

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "resident: %s\n", what.c_str());
  std::exit(EXIT_FAILURE);
}

/// A resident program that runs as a child process from `start` to `end`.
class Program {
 public:
  explicit Program(std::string command) : command_(std::move(command)) {}

  void start() {
    id_ = ::fork();
    if (id_ != 0) return;
    const int devNull = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(devNull, stream);
    const std::string line = "exec " + command_;
    ::execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
    ::_exit(127);
  }

  void end() const {
    ::kill(id_, SIGTERM);
    ::waitpid(id_, nullptr, 0);
  }

  const std::string& command() const { return command_; }

  /// Returns the command without the folder of its program.
  std::string commandWithoutFolder() const {
    const std::size_t slash = command_.substr(0, command_.find(' ')).rfind('/');
    return slash == std::string::npos ? command_ : command_.substr(slash + 1);
  }

  /// Returns the CPU time of all threads in milliseconds.
  double processorTime() const {
    return sumOverThreads([](const std::filesystem::path& thread) {
      double nanoseconds = 0;
      std::ifstream(thread / "schedstat") >> nanoseconds;
      return nanoseconds / 1e6;
    });
  }

  /// Returns the number of voluntary context switches of all threads.
  double voluntarySwitches() const {
    return sumOverThreads([](const std::filesystem::path& thread) {
      return figure(thread / "status", "voluntary_ctxt_switches:");
    });
  }

  /// Returns the resident set size in KiB.
  double residentMemory() const { return figure(folder() / "smaps_rollup", "Rss:"); }

  /// Returns the size of the private dirty pages in KiB.
  double privateDirtyMemory() const { return figure(folder() / "smaps_rollup", "Private_Dirty:"); }

 private:
  std::filesystem::path folder() const { return "/proc/" + std::to_string(id_); }

  static double figure(const std::filesystem::path& file, const std::string& name) {
    std::ifstream stream(file);
    std::string word;
    while (stream >> word && word != name) continue;
    double value = 0;
    if (!(stream >> value)) fail("a program exited: " + file.string());
    return value;
  }

  double sumOverThreads(const std::function<double(const std::filesystem::path&)>& count) const {
    double sum = 0;
    for (const auto& thread : std::filesystem::directory_iterator(folder() / "task")) {
      sum += count(thread.path());
    }
    return sum;
  }

  std::string command_;
  pid_t id_ = 0;
};

/// A minimal panel that owns the bus name of the StatusNotifierWatcher and accepts registrations.
class Panel {
 public:
  Panel() {
    static const sd_bus_vtable watcher[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", handleRegistration, 0),
        SD_BUS_VTABLE_END,
    };
    if (sd_bus_open_user(&bus_) < 0 ||
        sd_bus_add_object_vtable(bus_, nullptr, "/StatusNotifierWatcher",
                                 "org.kde.StatusNotifierWatcher", watcher, this) < 0 ||
        sd_bus_request_name(bus_, "org.kde.StatusNotifierWatcher", 0) < 0) {
      fail("the session bus is missing or already has a panel");
    }
  }
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  ~Panel() { sd_bus_flush_close_unref(bus_); }

  int registrations() const { return registrations_; }

  /// Processes D-Bus messages for `time`.
  void serve(Milliseconds time) {
    serveUntil(time, [] { return false; });
  }

  /// Processes D-Bus messages until the next registration, but at most for `timeout`.
  void serveRegistration(Milliseconds timeout) {
    serveUntil(timeout, [this, before = registrations_] { return registrations_ > before; });
  }

 private:
  /// Counts the registration and requests the item's properties, like a real panel.
  static int handleRegistration(sd_bus_message* call, void* object, sd_bus_error*) {
    auto& panel = *static_cast<Panel*>(object);
    ++panel.registrations_;
    sd_bus_call_method_async(panel.bus_, nullptr, sd_bus_message_get_sender(call),
                             "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll",
                             nullptr, nullptr, "s", "org.kde.StatusNotifierItem");
    return sd_bus_reply_method_return(call, "");
  }

  void serveUntil(Milliseconds timeout, const std::function<bool()>& isDone) {
    const auto end = Clock::now() + timeout;
    while (!isDone() && Clock::now() < end) {
      while (sd_bus_process(bus_, nullptr) > 0) continue;
      const Milliseconds rest = end - Clock::now();
      if (!isDone())
        sd_bus_wait(bus_, static_cast<std::uint64_t>(std::max(0.0, rest.count()) * 1e3));
    }
  }

  sd_bus* bus_ = nullptr;
  int registrations_ = 0;
};

/// Returns the median time from the start of the program to its registration, in milliseconds.
double registrationTime(Panel& panel, Program& program) {
  constexpr int starts = 21;
  constexpr Milliseconds timeout{10'000};
  std::vector<double> times;
  for (int i = 0; i < starts; ++i) {
    const auto start = Clock::now();
    const int before = panel.registrations();
    program.start();
    panel.serveRegistration(timeout);
    times.push_back(Milliseconds(Clock::now() - start).count());
    program.end();
    if (panel.registrations() == before)
      fail("the program does not register: " + program.command());
    panel.serve(Milliseconds(50));  // until the bus has released the program's name
  }
  std::nth_element(times.begin(), times.begin() + starts / 2, times.end());
  return times[starts / 2];
}

void measure(const char* title, double seconds, Panel& panel,
             const std::vector<Program>& programs) {
  struct Figures {
    double processor;
    double voluntarySwitches;
  };
  std::vector<Figures> before;
  before.reserve(programs.size());
  for (const Program& each : programs) {
    before.push_back({each.processorTime(), each.voluntarySwitches()});
  }
  panel.serve(Milliseconds(seconds * 1e3));
  std::printf(
      "\n%s:\n\n"
      "| program | resident, KiB | ratio | private, KiB | ratio | processor, ms/min | wakeups/min "
      "|\n"
      "|---|--:|--:|--:|--:|--:|--:|\n",
      title);
  const double minute = 60.0 / seconds;
  const double rss = programs.front().residentMemory();
  const double dirty = programs.front().privateDirtyMemory();
  for (std::size_t i = 0; i < programs.size(); ++i) {
    const Program& each = programs[i];
    std::printf(
        "| `%s` | %.0f | %.2f | %.0f | %.2f | %.1f | %.0f |\n", each.commandWithoutFolder().c_str(),
        each.residentMemory(), each.residentMemory() / rss, each.privateDirtyMemory(),
        each.privateDirtyMemory() / dirty, (each.processorTime() - before[i].processor) * minute,
        (each.voluntarySwitches() - before[i].voluntarySwitches) * minute);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const double seconds = argc > 4 ? std::atof(argv[1]) : 0.0;
  if (seconds <= 0.0) {
    std::fprintf(stderr, "usage: resident SECONDS PANEL CHARGE COMMAND...\n");
    return 2;
  }
  std::vector<Program> programs(argv + 4, argv + argc);
  ::prctl(PR_SET_NAME, argv[2]);
  Panel panel;
  const double registration = registrationTime(panel, programs.front());
  std::printf("`%s` is registered %.1f ms after its start (median).\n",
              programs.front().commandWithoutFolder().c_str(), registration);

  constexpr Milliseconds settlingTime{10'000};
  for (Program& each : programs) each.start();
  panel.serve(settlingTime);
  measure("On battery", seconds, panel, programs);
  if (std::system(argv[3]) != 0) fail(argv[3]);
  panel.serve(settlingTime);
  measure("Charging", seconds, panel, programs);
  for (const Program& each : programs) each.end();
}
