#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "menubar/desktop.h"
#include "menubar/menu.h"
#include "menubar/preferences.h"
#include "telemetry/battery_service.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Application in the menu bar. Reads the battery, stores the history of the last hour, provides
/// the contents of the item and its menu, and performs the chosen actions. The desktop and the
/// battery service must outlive it.
class App : public ApplicationDelegate, public std::enable_shared_from_this<App> {
 public:
  /// Creates an `App`. The `App` must be shared because its timers use weak pointers to it.
  static std::shared_ptr<App> make(Desktop& desktop, BatteryService& battery,
                                   std::string_view version);

  /// Shows the item, and refreshes it every 5 seconds and when a power source changes.
  void applicationDidFinishLaunching() override;

  /// Reads the battery and shows the reading. Without a battery, sets the title to "No battery" and
  /// leaves everything else unchanged.
  void refresh();

  /// Reads the preferences from the desktop.
  Preferences preferences() const;
  void setMode(Mode mode);
  void setUseColor(bool value);
  void setAnimate(bool value);

  /// Returns whether the glyph should be animated: the battery is charging below 100 %, the
  /// preference is on, and the user has not requested reduced motion.
  bool shouldAnimate(const Preferences& preferences) const;

  /// Returns the glyph for a reading: its level, a bolt, or the current frame of the animation.
  /// Returns std::nullopt if no symbol has the glyph's name.
  std::optional<Image> symbolImage(const Reading& reading, const Preferences& preferences) const;

  Menu menuWillOpen() override;
  Menu menu() override;

  /// Performs the action of the chosen menu item. Ignores the actions that desktops perform.
  void perform(const Choice& choice) override;

  // Actions of the menu items.

  /// Stores the mode with the number `tag` and refreshes the item. Ignores unknown numbers.
  void pick(std::int64_t tag);
  void toggleColor();
  void toggleAnimate();
  void copyDetails();
  void toggleLogin();
  void openSettings();

  // State.

  bool isAnimating() const { return animationTimer_ != nullptr; }
  std::int64_t frame() const { return frame_; }
  const std::optional<Reading>& last() const { return last_; }
  const std::vector<Sample>& history() const { return history_; }

 private:
  App(Desktop& desktop, BatteryService& battery, std::string_view version);

  /// Adds a sample and removes the samples older than an hour. Does nothing if the newest sample is
  /// younger than 30 seconds.
  void addSample(const Reading& reading);

  /// Starts or stops the animation timer, as `shouldAnimate` requires.
  void updateAnimation(const Preferences& preferences);
  void advanceAnimation();

  /// Calls `action` every `interval` seconds, as long as the returned timer and this `App` exist.
  std::unique_ptr<Timer> startTimer(double interval, void (App::*action)());

  Desktop& desktop_;
  BatteryService& battery_;
  std::string version_;
  std::unique_ptr<Timer> refreshTimer_;
  std::unique_ptr<Timer> animationTimer_;
  std::int64_t frame_ = 0;
  std::optional<Reading> last_;
  std::vector<Sample> history_;
};

}  // namespace lumowatt
