#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/failure.h"
#include "base/interface.h"
#include "graphics/image.h"
#include "menubar/menu.h"
#include "render/title.h"

namespace lumowatt {

/// Application that a desktop runs. The desktop notifies it of events and requests its menu.
class ApplicationDelegate : public Interface {
 public:
  /// Starts the application. Called once, before the other functions.
  virtual void applicationDidFinishLaunching() = 0;

  /// Reads the battery and returns the menu that is about to open.
  virtual Menu menuWillOpen() = 0;

  /// Returns the menu for the last reading, without reading the battery.
  virtual Menu menu() = 0;

  /// Performs the action of a chosen menu item. Not called for the actions that the desktop
  /// performs itself.
  virtual void perform(const Choice& choice) = 0;
};

/// Running timer, stopped on destruction.
class Timer : public Interface {};

/// Contents of the item's button in the menu bar.
struct ButtonContents {
  std::optional<Image> image;  ///< placed before the title in reading order
  Title title;
  std::string toolTip;  ///< details of the reading, joined by line feeds
  std::string accessibilityLabel;
};

/// Button of the item in the menu bar.
class StatusButton : public Interface {
 public:
  virtual void show(ButtonContents contents) = 0;

  /// Replaces only the image. Removes it if `image` is empty.
  virtual void setImage(const std::optional<Image>& image) = 0;

  /// Replaces only the title, with text in the style of the menu bar.
  virtual void setTitle(std::string_view title) = 0;
};

using PreferenceValue = std::variant<std::int64_t, bool>;

/// Stored value, parsed both as an integer and as a Boolean.
struct StoredPreference {
  std::int64_t integer;  ///< 0 if the value is not a number
  bool boolean;          ///< false if the value is not a Boolean
};

enum class LoginItemStatus { notRegistered, enabled, requiresApproval, notFound };

/// Services of the desktop that `App` uses. All callbacks run on the thread that called `run`.
class Desktop : public Interface {
 public:
  /// Runs the application until it exits, and owns it meanwhile. Succeeds if the user quit the
  /// application.
  virtual Result<> run(std::shared_ptr<ApplicationDelegate> delegate) = 0;

  // Status item, shown from the start.

  /// Returns the button of the item; null if the item has none.
  virtual StatusButton* button() = 0;
  /// Attaches the menu to the item. The desktop stores the position of the item in the menu bar
  /// under `autosaveName`.
  virtual void attachMenu(std::string_view autosaveName) = 0;

  // Time, power sources and preferences.

  /// Returns the seconds since a fixed instant. The clock is monotonic and includes the time that
  /// the machine sleeps.
  virtual double now() = 0;
  /// Calls `tick` every `interval` seconds. On a desktop that blocks while its menu is open, the
  /// calls pause until the menu is closed.
  virtual std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) = 0;
  /// Calls `onChanged` after every change of a power source, if the system reports such changes.
  virtual void watchPowerSources(std::function<void()> onChanged) = 0;

  /// Reads the values stored under `keys` atomically. The result contains one element for each key;
  /// the element is empty if no value is stored.
  virtual std::vector<std::optional<StoredPreference>> preferences(
      const std::vector<std::string_view>& keys) = 0;
  virtual void setPreference(std::string_view key, PreferenceValue value) = 0;

  /// Returns whether the user has requested reduced motion from the system.
  virtual bool reducesMotion() = 0;

  // Pasteboard, login item and system functions.

  /// Replaces the contents of the pasteboard.
  virtual void copyText(std::string_view text) = 0;
  virtual LoginItemStatus loginItemStatus() = 0;
  /// Registers or unregisters the login item. Returns false on failure.
  virtual bool setLoginItem(bool isRegistered) = 0;
  virtual void beep() = 0;
  /// Opens the system's battery settings. Does nothing on a system without them.
  virtual void openBatterySettings() = 0;
};

}  // namespace lumowatt
