#include "platform/linux/desktop/linux_desktop.h"

#include <malloc.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>

#include "platform/linux/desktop/boottime.h"
#include "platform/linux/desktop/loop_timer.h"
#include "platform/linux/desktop/programs.h"
#include "platform/linux/desktop/user_file.h"

namespace lumowatt::desktop {

namespace {

/// The name that the one process owns on the session's bus that shows the item.
constexpr auto applicationId = "com.fernhollow.Lumowatt";

constexpr int largeBlock = 128 * 1024;

constexpr auto noSessionBus = "no session bus";

void complain(const char* what) { std::fprintf(stderr, "lumowatt: %s\n", what); }

/// Of an error on the bus, as libsystemd has them.
void complainOfBus(int error) {
  const char* const reason =
      error == -ENOMEDIUM ? "the environment does not say where it is" : std::strerror(-error);
  std::fprintf(stderr, "lumowatt: the session bus: %s\n", reason);
}

/// Lets the loop end by the signals that ask a process to end.
void endBySignals(sd_event* loop) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    sigset_t blocked{};
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, signal);
    ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
    const bool isWaitedFor = sd_event_add_signal(loop, nullptr, signal, nullptr, nullptr) >= 0;
    if (!isWaitedFor) ::sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
  }
}

}  // namespace

LinuxDesktop::LinuxDesktop(const std::string& program, std::string icons,
                           std::unique_ptr<BitmapFactory> bitmaps)
    : icons_(std::move(icons)),
      bitmaps_(std::move(bitmaps)),
      preferences_(configurationFile("lumowatt/preferences")),
      loginItem_(configurationFile("autostart/com.fernhollow.Lumowatt.desktop"), program) {}

std::optional<std::string> LinuxDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  if (!connect()) return noSessionBus;
  const int named = sd_bus_request_name(bus_.get(), applicationId, 0);
  if (named == -EEXIST) return std::nullopt;
  if (named < 0) {
    complainOfBus(named);
    return noSessionBus;
  }
  // What a large message took is to go back to the system when it is answered.
  ::mallopt(M_MMAP_THRESHOLD, largeBlock);
  std::signal(SIGCHLD, SIG_IGN);  // nobody waits for the programs that are started
  endBySignals(loop_.get());

  application_ = std::move(delegate);
  settings_.emplace(bus_.get());
  item_.emplace(bus_.get(), loop_.get(), icons_);
  application_->applicationDidFinishLaunching();
  item_->show();
  const int status = sd_event_loop(loop_.get());
  application_.reset();
  if (status < 0) return std::strerror(-status);
  return status == 0 ? std::nullopt : std::optional<std::string>("session bus lost");
}

bool LinuxDesktop::connect() {
  sd_event* loop = nullptr;
  int status = sd_event_new(&loop);
  loop_.reset(loop);
  sd_bus* bus = nullptr;
  if (status >= 0) status = sd_bus_open_user(&bus);
  bus_.reset(bus);
  if (status >= 0) status = sd_bus_set_exit_on_disconnect(bus, 1);
  if (status >= 0) status = sd_bus_attach_event(bus, loop, SD_EVENT_PRIORITY_NORMAL);
  if (status < 0) complainOfBus(status);
  return status >= 0;
}

// The status item

void LinuxDesktop::setAutosaveName(std::string_view name) {
  if (item_) item_->setId(name);
}

void LinuxDesktop::attachMenu() {
  menu_.emplace(bus_.get(), *application_, [this](const MenuItem& item) { choose(item); });
}

/// An action of the application's, after which the menu follows the item.
std::function<void()> LinuxDesktop::followed(std::function<void()> action) {
  return [this, action = std::move(action)] {
    action();
    if (menu_) menu_->follow(item_->toolTip());
  };
}

void LinuxDesktop::choose(const MenuItem& item) {
  if (item.view) {
    const Appearance appearance = settings_->appearance();
    viewer_.show(application_->chartPicture(appearance), appearance, *bitmaps_);
  } else if (item.action == Action::terminate) {
    sd_event_exit(loop_.get(), 0);
  } else {
    application_->perform(item);
  }
}

// Time

double LinuxDesktop::now() { return static_cast<double>(boottime()) / 1e6; }

std::unique_ptr<Timer> LinuxDesktop::startTimer(double interval, std::function<void()> tick) {
  return std::make_unique<LoopTimer>(loop_.get(), interval, followed(std::move(tick)));
}

bool LinuxDesktop::watchPowerSources(std::function<void()> changed) {
  power_.emplace(loop_.get(), followed(std::move(changed)));
  return power_->isWatching();
}

// The user's files

void LinuxDesktop::setIntegerPreference(std::string_view key, std::int64_t value) {
  setPreference(key, std::to_string(value));
}

void LinuxDesktop::setBooleanPreference(std::string_view key, bool value) {
  setPreference(key, value ? "true" : "false");
}

void LinuxDesktop::setPreference(std::string_view key, std::string_view value) {
  if (preferences_.set(key, value)) return;
  complain("the preference cannot be stored");
  beep();
}

// Other programs

void LinuxDesktop::copyText(std::string_view text) {
  if (startFirst(clipboardCommands(), text)) return;
  complain("there is no wl-copy or xclip to copy the details with");
  beep();
}

void LinuxDesktop::beep() { startFirst(bellCommands()); }

void LinuxDesktop::openBatterySettings() {
  if (!startFirst(batterySettingsCommands())) complain("there are no battery settings to open");
}

}  // namespace lumowatt::desktop
