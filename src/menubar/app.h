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

/// The application in the menu bar: it reads the battery, keeps the last hour, decides what the
/// item and its menu show, and does what is chosen. Desktop and battery must outlive it.
class App : public ApplicationDelegate, public std::enable_shared_from_this<App> {
 public:
  /// Timers keep the `App` weakly, so that it has to be shared.
  static std::shared_ptr<App> make(Desktop& desktop, BatteryService& battery,
                                   std::string_view version);

  /// Shows the item, and refreshes it from now on every 5 seconds and when a power source changes.
  void applicationDidFinishLaunching() override;

  /// Reads the battery and shows the reading. Without one, the title says so and all else stays.
  void refresh();

  /// The preferences, read afresh.
  Preferences preferences() const;
  void setMode(Mode mode);
  void setUseColor(bool value);
  void setAnimate(bool value);

  /// Whether the glyph is to be animated now.
  bool shouldAnimate(const Preferences& preferences) const;

  /// The glyph for a reading: its level, a bolt, or a frame of the animation. Absent when the
  /// platform has no such symbol.
  std::optional<Image> symbolImage(const Reading& reading, const Preferences& preferences) const;

  Menu menuWillOpen() override;
  Menu menu() override;

  /// Does what the chosen item of the menu offers.
  void perform(const Choice& choice) override;

  // What the items of the menu do.

  /// Shows the mode of that number from now on; ignores any other number.
  void pick(std::int64_t tag);
  void toggleColor();
  void toggleAnimate();
  void copyDetails();
  void toggleLogin();
  void openSettings();

  // What it holds.

  bool isAnimating() const { return animationTimer_ != nullptr; }
  std::int64_t frame() const { return frame_; }
  const std::optional<Reading>& last() const { return last_; }
  const std::vector<Sample>& history() const { return history_; }

 private:
  App(Desktop& desktop, BatteryService& battery, std::string_view version);

  void remember(const Reading& reading);
  void updateAnimation(const Preferences& preferences);
  void advanceAnimation();
  std::unique_ptr<Timer> repeat(double interval, void (App::*action)());

  Desktop& desktop_;
  BatteryService& battery_;
  std::string version_;
  std::unique_ptr<Timer> timer_;
  std::unique_ptr<Timer> animationTimer_;
  std::int64_t frame_ = 0;
  std::optional<Reading> last_;
  std::vector<Sample> history_;
};

}  // namespace lumowatt
