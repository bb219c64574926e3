#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "menubar/desktop.h"

namespace lumowatt {

/// Desktop with a simulated clock. Records the calls that it receives and the contents that it
/// shows.
class FakeDesktop : public Desktop, public StatusButton {
 public:
  // Desktop

  Result<> run(std::shared_ptr<ApplicationDelegate> delegate) override;
  StatusButton* button() override { return hasButton ? this : nullptr; }
  void attachMenu(std::string_view autosaveName) override {
    recordCall("attach menu " + std::string(autosaveName));
  }
  double now() override { return time; }
  std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) override;
  void watchPowerSources(std::function<void()> onChanged) override;
  std::vector<std::optional<StoredPreference>> preferences(
      const std::vector<std::string_view>& keys) override;
  void setPreference(std::string_view key, PreferenceValue value) override;
  bool reducesMotion() override { return reducedMotion; }
  void copyText(std::string_view text) override { pasteboard = text; }
  LoginItemStatus loginItemStatus() override { return loginItem; }
  bool setLoginItem(bool isRegistered) override;
  void beep() override { recordCall("beep"); }
  void openBatterySettings() override { recordCall("open battery settings"); }

  // StatusButton

  void show(ButtonContents contents) override;
  void setImage(const std::optional<Image>& newImage) override;
  void setTitle(std::string_view newTitle) override;

  /// Advances the clock and calls the timers that become due, in the order of their times.
  void advanceTime(double seconds);

  /// Notifies the application that a power source changed.
  void reportPowerSourceChange() const;

  /// Returns the name of the symbol that the button shows, followed by "template" or the color of
  /// its tint. Returns "none" without a symbol.
  std::string symbol() const;

  /// Returns the title of the button as plain text.
  std::string plainTitle() const;

  /// Returns the intervals of the active timers.
  std::vector<double> timerIntervals() const;

  bool hasButton = true;
  bool canWatchPowerSources = true;  ///< whether `watchPowerSources` has an effect
  bool reducedMotion = false;
  bool isLoginItemReadOnly = false;  ///< whether `setLoginItem` fails
  double time = 1000.0;
  LoginItemStatus loginItem = LoginItemStatus::notRegistered;
  std::map<std::string, std::string, std::less<>> store;  ///< stored preferences as text
  int preferenceReads = 0;
  std::string pasteboard = "(untouched)";
  ButtonContents buttonContents;
  std::vector<std::string> calls;  ///< received calls, in order

  /// Callbacks of all timers that were ever started, including stopped ones.
  std::vector<std::function<void()>> scheduledTicks;

 private:
  struct ActiveTimer {
    double interval;
    double nextTick;
    std::function<void()> tick;
  };
  class TimerHandle;

  void recordCall(std::string text) { calls.push_back(std::move(text)); }

  std::list<ActiveTimer> timers_;
  std::function<void()> onPowerSourceChanged_;
};

}  // namespace lumowatt
