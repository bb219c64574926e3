#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graphics/attributed_string.h"
#include "graphics/image.h"
#include "graphics/tile.h"
#include "menubar/menu.h"

namespace lumowatt {

/// What a desktop runs: it is told what happens, and asked for the menu.
class ApplicationDelegate {
 public:
  ApplicationDelegate() = default;
  ApplicationDelegate(const ApplicationDelegate&) = delete;
  ApplicationDelegate& operator=(const ApplicationDelegate&) = delete;
  virtual ~ApplicationDelegate() = default;

  /// The application has started. Called once, first.
  virtual void applicationDidFinishLaunching() = 0;

  /// The menu is about to open, and will be what `menu` is afterwards.
  virtual void menuWillOpen() = 0;

  /// Makes `menu` what it would be now, by the last reading.
  virtual void updateMenu() = 0;
  virtual const Menu& menu() const = 0;

  /// The chart in the menu, for a desktop whose menus show text alone: as a line of text, and as a
  /// picture of its own.
  virtual std::string chartText() const = 0;
  virtual Drawing chartPicture(Appearance appearance) const = 0;

  /// The title of the last reading, for a desktop whose menu bar shows icons alone. None before
  /// there was a reading.
  virtual std::vector<Tile> titleTiles() const = 0;

  /// An item of the menu was chosen whose action is not the desktop's own.
  virtual void perform(const MenuItem& item) = 0;
};

/// A timer runs as long as there is one of these.
class Timer {
 public:
  Timer() = default;
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  virtual ~Timer() = default;
};

/// What the item shows in the menu bar.
class StatusButton {
 public:
  StatusButton() = default;
  StatusButton(const StatusButton&) = delete;
  StatusButton& operator=(const StatusButton&) = delete;
  virtual ~StatusButton() = default;

  /// An absent image clears it.
  virtual void setImage(const std::optional<Image>& image) = 0;
  /// Puts the image before the title in reading order.
  virtual void setImageLeading() = 0;
  virtual void setTitle(std::string_view title) = 0;
  virtual void setAttributedTitle(const AttributedString& title) = 0;
  virtual void setToolTip(std::string_view text) = 0;
  virtual void setAccessibilityLabel(std::string_view text) = 0;
};

enum class LoginItemStatus { notRegistered, enabled, requiresApproval, notFound };

/// The services of the desktop that `App` asks for. Whatever it calls back, it calls on the thread
/// that runs it.
class Desktop {
 public:
  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  /// Runs the application, and keeps it, until it is to end. Returns what went wrong, in the words
  /// to be printed after "error="; absent when it was quit.
  virtual std::optional<std::string> run(std::shared_ptr<ApplicationDelegate> delegate) = 0;

  // The status item, which is shown from the beginning.

  /// Null where the item has no button.
  virtual StatusButton* button() = 0;
  /// The name under which the desktop keeps the item's position.
  virtual void setAutosaveName(std::string_view name) = 0;
  /// From now on, choosing the item opens the menu.
  virtual void attachMenu() = 0;

  // Time.

  /// Seconds from a fixed instant, counting also while the machine sleeps, never going back.
  virtual double now() = 0;
  /// Calls `tick` every `interval` seconds; where a desktop waits for its open menu, not meanwhile.
  virtual std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) = 0;
  /// Calls `changed` after every change of a power source. False when that is not possible.
  virtual bool watchPowerSources(std::function<void()> changed) = 0;

  // The store of preferences, read afresh each time.

  virtual bool hasPreference(std::string_view key) = 0;
  /// 0 for what is no number.
  virtual std::int64_t integerPreference(std::string_view key) = 0;
  /// False for what is no truth value.
  virtual bool booleanPreference(std::string_view key) = 0;
  virtual void setIntegerPreference(std::string_view key, std::int64_t value) = 0;
  virtual void setBooleanPreference(std::string_view key, bool value) = 0;

  /// Whether the user asked the system for less motion.
  virtual bool reducesMotion() = 0;

  // The pasteboard, the login item, and what the workspace does.

  /// Replaces what is on the pasteboard.
  virtual void copyText(std::string_view text) = 0;
  virtual LoginItemStatus loginItemStatus() = 0;
  /// False when the system refuses.
  virtual bool registerLoginItem() = 0;
  virtual bool unregisterLoginItem() = 0;
  virtual void beep() = 0;
  /// Nothing happens where there are no such settings.
  virtual void openBatterySettings() = 0;
};

}  // namespace lumowatt
