#include "platform/freedesktop/session_desktop.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <utility>
#include <variant>

#include "base/error_report.h"
#include "platform/freedesktop/bus/boottime.h"
#include "platform/freedesktop/bus/loop_timer.h"
#include "platform/freedesktop/bus/session_bus.h"
#include "platform/freedesktop/user/child.h"
#include "platform/freedesktop/user/commands.h"
#include "platform/freedesktop/user/environment.h"
#include "platform/freedesktop/user/time_of_day.h"
#include "platform/posix/allocator.h"

namespace lumowatt::freedesktop {

namespace {

/// Name on the session bus. Only one process can own the name, so only one process shows the item.
constexpr auto applicationId = "com.fernhollow.Lumowatt";

constexpr int largeBlock = 128 * 1024;  // bytes

/// Makes the loop exit on SIGINT, SIGTERM and SIGHUP.
void exitOnSignals(sd_event* loop) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    sigset_t blocked{};
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, signal);
    ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
    const bool isHandled = sd_event_add_signal(loop, nullptr, signal, nullptr, nullptr) >= 0;
    if (!isHandled) ::sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
  }
}

/// Makes the loop exit with a failure when the bus closes the connection. Does not use
/// sd_bus_set_exit_on_disconnect, which terminates the process immediately in versions of
/// libsystemd before 247. Returns a negative status on failure.
int exitWhenDisconnected(sd_bus* bus, sd_event* loop) {
  constexpr auto rule =
      "type='signal',sender='org.freedesktop.DBus.Local',path='/org/freedesktop/DBus/Local',"
      "interface='org.freedesktop.DBus.Local',member='Disconnected'";
  const auto exitLoop = [](sd_bus_message*, void* eventLoop, sd_bus_error*) {
    return sd_event_exit(static_cast<sd_event*>(eventLoop), EXIT_FAILURE);
  };
  return sd_bus_add_match(bus, nullptr, rule, exitLoop, loop);
}

}  // namespace

SessionDesktop::SessionDesktop(const std::string& program, std::string icons,
                               std::unique_ptr<BitmapFactory> bitmaps)
    : icons_(std::move(icons)),
      bitmaps_(std::move(bitmaps)),
      preferences_(configurationFile("lumowatt/preferences")),
      loginItem_(configurationFile("autostart/com.fernhollow.Lumowatt.desktop"), program) {}

Result<> SessionDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  const Result<bool> connected = connect();
  if (!connected) {
    reportError("cannot connect to the session bus", connected.failure().reason);
    return Failure{"no session bus"};
  }
  if (!*connected) return {};
  // Memory of a large message is returned to the system when the message is released.
  returnLargeBlocks(largeBlock);
  prepareToWatchChildren();
  exitOnSignals(loop_.get());

  application_ = std::move(delegate);
  autostart_.emplace(bus_.get(), loop_.get());
  clipboard_.emplace(loop_.get(), bus_.get());
  viewer_.emplace(loop_.get());
  settings_.emplace(bus_.get(), [this] { updateInk(); });
  button_.emplace(bus_.get(), loop_.get(), icons_, *application_,
                  [this](const Choice& choice) { choose(choice); });
  application_->applicationDidFinishLaunching();
  button_->watchPanels();
  const int status = sd_event_loop(loop_.get());
  button_.reset();
  application_.reset();
  if (status < 0) return systemFailure(-status);
  return status == 0 ? Result<>() : Failure{"session bus lost"};
}

Result<bool> SessionDesktop::connect() {
  int status = sd_event_new(Out(loop_));
  if (status < 0) return busFailure(status);
  Result<Bus> bus = openSessionBus(loop_.get());
  if (!bus) return bus.failure();
  bus_ = std::move(*bus);
  status = exitWhenDisconnected(bus_.get(), loop_.get());
  if (status >= 0) status = sd_bus_request_name(bus_.get(), applicationId, 0);
  if (status == -EEXIST) return false;
  if (status < 0) return busFailure(status);
  return true;
}

std::function<void()> SessionDesktop::withMenuUpdate(std::function<void()> action) {
  return [this, action = std::move(action)] {
    action();
    if (button_) button_->updateMenuRows();
  };
}

void SessionDesktop::updateInk() {
  const std::optional<Appearance> scheme = settings_->colorScheme();
  const bool isDark = scheme == Appearance::dark;
  if (button_) {
    button_->setInk(!scheme  ? artwork::Ink::unknown
                    : isDark ? artwork::Ink::light
                             : artwork::Ink::dark);
  }
}

void SessionDesktop::choose(const Choice& choice) {
  if (choice.action == Action::showChart) {
    showChart();
  } else if (choice.action == Action::terminate) {
    sd_event_exit(loop_.get(), 0);
  } else {
    application_->perform(choice);
  }
}

void SessionDesktop::showChart() {
  const Menu menu = application_->menu();
  for (const MenuItem& item : menu) {
    const auto* const chart = std::get_if<MenuChart>(&item);
    if (chart == nullptr) continue;
    const ChartContext context{.accent = settings_->accentColor(),
                               .midnight = lastMidnight(now(), std::time(nullptr))};
    viewer_->show(chart->picture(context), settings_->appearance(), *bitmaps_);
  }
}

// Time

double SessionDesktop::now() { return static_cast<double>(boottime()) / 1e6; }

std::unique_ptr<Timer> SessionDesktop::startTimer(double interval, std::function<void()> tick) {
  return std::make_unique<LoopTimer>(loop_.get(), interval, withMenuUpdate(std::move(tick)));
}

// The user's files

void SessionDesktop::setPreference(std::string_view key, PreferenceValue value) {
  const auto* const isOn = std::get_if<bool>(&value);
  const std::string text = isOn == nullptr ? std::to_string(std::get<std::int64_t>(value))
                           : *isOn         ? "true"
                                           : "false";
  const Result<> stored = preferences_.set(key, text);
  if (stored) return;
  reportError("cannot store the preference", stored.failure().reason);
  beep();
}

LoginItemStatus SessionDesktop::loginItemStatus() {
  // `isRead` returns the last known state and starts a query for the next call.
  const bool isRead = autostart_->isRead();
  const LoginItemStatus status = loginItem_.status();
  return status == LoginItemStatus::enabled && !isRead ? LoginItemStatus::notFound : status;
}

bool SessionDesktop::setLoginItem(bool isRegistered) {
  if (!isRegistered) return loginItem_.remove();
  if (autostart_->isRead()) return loginItem_.add();
  reportError("cannot open at login", "nothing in this session reads the autostart folder");
  return false;
}

// Other programs

void SessionDesktop::copyText(std::string_view text) { clipboard_->copy(std::string(text)); }

void SessionDesktop::beep() { startDetached(loop_.get(), bellCommands()); }

void SessionDesktop::openBatterySettings() {
  if (startDetached(loop_.get(), batterySettingsCommands())) return;
  reportError("cannot open the battery settings", "no program for them can be started");
}

}  // namespace lumowatt::freedesktop
