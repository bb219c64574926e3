#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "menubar/desktop.h"

namespace lumowatt {

/// A desktop whose time passes when it is told to, and that keeps what it is asked to show and do.
class FakeDesktop : public Desktop, public StatusButton {
 public:
  // Desktop

  Result<> run(std::shared_ptr<ApplicationDelegate> delegate) override;
  StatusButton* button() override { return hasButton ? this : nullptr; }
  void attachMenu(std::string_view autosaveName) override {
    note("attach menu " + std::string(autosaveName));
  }
  double now() override { return time; }
  std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) override;
  void watchPowerSources(std::function<void()> changed) override;
  std::vector<std::optional<StoredPreference>> preferences(
      const std::vector<std::string_view>& keys) override;
  void setPreference(std::string_view key, PreferenceValue value) override;
  bool reducesMotion() override { return reducedMotion; }
  void copyText(std::string_view text) override { pasteboard = text; }
  LoginItemStatus loginItemStatus() override { return loginItem; }
  bool setLoginItem(bool isRegistered) override;
  void beep() override { note("beep"); }
  void openBatterySettings() override { note("open battery settings"); }

  // StatusButton

  void show(ButtonContents contents) override;
  void setImage(const std::optional<Image>& newImage) override;
  void setTitle(std::string_view newTitle) override;

  /// Lets time pass, and the timers tick in the order of their times.
  void pass(double seconds);

  /// Tells that a power source changed.
  void changePower() const;

  /// The name and the tint of the symbol that is shown; "none" without one.
  std::string symbol() const;

  /// The title in plain text.
  std::string plainTitle() const;

  /// The intervals of the timers that run.
  std::vector<double> intervals() const;

  bool hasButton = true;
  bool watchesPower = true;  ///< whether it can
  bool reducedMotion = false;
  bool refusesLogin = false;  ///< whether changing the login item fails
  double time = 1000.0;
  LoginItemStatus loginItem = LoginItemStatus::notRegistered;
  std::map<std::string, std::string, std::less<>> store;  ///< of preferences
  int preferenceReadings = 0;
  std::string pasteboard = "(untouched)";
  ButtonContents shown;
  std::vector<std::string> notes;  ///< what was called, in order

  /// Ticks that were once scheduled, whose timers may have been stopped since.
  std::vector<std::function<void()>> allTicks;

 private:
  struct Running {
    double interval;
    double next;
    std::function<void()> tick;
  };
  class RunningTimer;

  void note(std::string text) { notes.push_back(std::move(text)); }

  std::list<Running> timers_;
  std::function<void()> powerChanged_;
};

}  // namespace lumowatt
