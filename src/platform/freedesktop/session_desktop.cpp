#include "platform/freedesktop/session_desktop.h"

#include <malloc.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>

#include "platform/freedesktop/bus/boottime.h"
#include "platform/freedesktop/bus/loop_timer.h"
#include "platform/freedesktop/bus/session_bus.h"
#include "platform/freedesktop/user/programs.h"
#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

namespace {

/// The name that the one process owns on the session's bus that shows the item.
constexpr auto applicationId = "com.fernhollow.Lumowatt";

constexpr int largeBlock = 128 * 1024;

void complain(const char* what) { std::fprintf(stderr, "lumowatt: %s\n", what); }

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

SessionDesktop::SessionDesktop(const std::string& program, std::string icons,
                               std::unique_ptr<BitmapFactory> bitmaps)
    : icons_(std::move(icons)),
      bitmaps_(std::move(bitmaps)),
      preferences_(configurationFile("lumowatt/preferences")),
      loginItem_(configurationFile("autostart/com.fernhollow.Lumowatt.desktop"), program) {}

std::optional<std::string> SessionDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  const int named = connect();
  if (named == -EEXIST) return std::nullopt;
  if (named < 0) {
    std::fprintf(stderr, "lumowatt: the session bus: %s\n", busFailure(named));
    return "no session bus";
  }
  // What a large message took is to go back to the system when it is answered.
  ::mallopt(M_MMAP_THRESHOLD, largeBlock);
  std::signal(SIGCHLD, SIG_IGN);  // nobody waits for the programs that are started
  endBySignals(loop_.get());

  application_ = std::move(delegate);
  settings_.emplace(bus_.get());
  button_.emplace(bus_.get(), loop_.get(), icons_, *application_,
                  [this](const MenuItem& item) { choose(item); });
  application_->applicationDidFinishLaunching();
  button_->show();
  const int status = sd_event_loop(loop_.get());
  button_.reset();
  application_.reset();
  if (status < 0) return std::strerror(-status);
  return status == 0 ? std::nullopt : std::optional<std::string>("session bus lost");
}

/// Connects to the session, as the one process in it that shows the item: -EEXIST when there is
/// another.
int SessionDesktop::connect() {
  sd_event* loop = nullptr;
  int status = sd_event_new(&loop);
  loop_.reset(loop);
  if (status >= 0) status = openSessionBus(loop, bus_);
  if (status >= 0) status = sd_bus_set_exit_on_disconnect(bus_.get(), 1);
  return status < 0 ? status : sd_bus_request_name(bus_.get(), applicationId, 0);
}

// The status item

void SessionDesktop::setAutosaveName(std::string_view name) {
  if (button_) button_->setId(name);
}

void SessionDesktop::attachMenu() {
  if (button_) button_->attachMenu();
}

std::function<void()> SessionDesktop::followed(std::function<void()> action) {
  return [this, action = std::move(action)] {
    action();
    if (button_) button_->followMenu();
  };
}

void SessionDesktop::choose(const MenuItem& item) {
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

double SessionDesktop::now() { return static_cast<double>(boottime()) / 1e6; }

std::unique_ptr<Timer> SessionDesktop::startTimer(double interval, std::function<void()> tick) {
  return std::make_unique<LoopTimer>(loop_.get(), interval, followed(std::move(tick)));
}

// The user's files

void SessionDesktop::setIntegerPreference(std::string_view key, std::int64_t value) {
  setPreference(key, std::to_string(value));
}

void SessionDesktop::setBooleanPreference(std::string_view key, bool value) {
  setPreference(key, value ? "true" : "false");
}

void SessionDesktop::setPreference(std::string_view key, std::string_view value) {
  if (preferences_.set(key, value)) return;
  complain("the preference cannot be stored");
  beep();
}

// Other programs

void SessionDesktop::copyText(std::string_view text) {
  if (startFirst(clipboardCommands(), text)) return;
  complain("no wl-copy or xclip can be started to copy the details");
  beep();
}

void SessionDesktop::beep() { startFirst(bellCommands()); }

void SessionDesktop::openBatterySettings() {
  if (!startFirst(batterySettingsCommands())) complain("there are no battery settings to open");
}

}  // namespace lumowatt::freedesktop
