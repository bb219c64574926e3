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

/// What a desktop runs: it is told what happens, and asked for the menu.
class ApplicationDelegate : public Interface {
 public:
  /// The application has started. Called once, first.
  virtual void applicationDidFinishLaunching() = 0;

  /// The menu is about to open. Returns it, by a reading that is taken for it.
  virtual Menu menuWillOpen() = 0;

  /// The menu as it would be now, by the last reading.
  virtual Menu menu() = 0;

  /// An item of the menu was chosen whose action is not the desktop's own.
  virtual void perform(const Choice& choice) = 0;
};

/// A timer runs as long as there is one of these.
class Timer : public Interface {};

/// What the item shows in the menu bar.
struct ButtonContents {
  std::optional<Image> image;  ///< stands before the title in reading order
  Title title;
  std::string toolTip;  ///< the report of the menu, its lines joined by line feeds
  std::string accessibilityLabel;
};

/// The item's button in the menu bar.
class StatusButton : public Interface {
 public:
  virtual void show(ButtonContents contents) = 0;

  /// Replaces the image alone; an absent one clears it.
  virtual void setImage(const std::optional<Image>& image) = 0;

  /// Replaces the title alone, by a text in the style of the menu bar.
  virtual void setTitle(std::string_view title) = 0;
};

using PreferenceValue = std::variant<std::int64_t, bool>;

/// A stored value, read both as a number and as a truth value.
struct StoredPreference {
  std::int64_t integer;  ///< 0 when it is not a number
  bool boolean;          ///< false when it is not a truth value
};

enum class LoginItemStatus { notRegistered, enabled, requiresApproval, notFound };

/// The services of the desktop that `App` asks for. Whatever it calls back, it calls on the thread
/// that runs it.
class Desktop : public Interface {
 public:
  /// Runs the application, and keeps it, until it ends. Succeeds when the user quit it.
  virtual Result<> run(std::shared_ptr<ApplicationDelegate> delegate) = 0;

  // The status item, which is shown from the beginning.

  /// Null where the item has no button.
  virtual StatusButton* button() = 0;
  /// Lets the item open the menu from now on, and keep its position under a name.
  virtual void attachMenu(std::string_view autosaveName) = 0;

  // Time.

  /// Seconds from a fixed instant, counting also while the machine sleeps, never going back.
  virtual double now() = 0;
  /// Calls `tick` every `interval` seconds; where a desktop waits for its open menu, not meanwhile.
  virtual std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) = 0;
  /// Calls `changed` after every change of a power source, where the system reports them.
  virtual void watchPowerSources(std::function<void()> changed) = 0;

  /// What is stored under each of these keys, all read at this moment; absent where nothing is.
  virtual std::vector<std::optional<StoredPreference>> preferences(
      const std::vector<std::string_view>& keys) = 0;
  virtual void setPreference(std::string_view key, PreferenceValue value) = 0;

  /// Whether the user asked the system for less motion.
  virtual bool reducesMotion() = 0;

  // The pasteboard, the login item, and what the workspace does.

  /// Replaces what is on the pasteboard.
  virtual void copyText(std::string_view text) = 0;
  virtual LoginItemStatus loginItemStatus() = 0;
  /// Registers or unregisters the login item. False when the system refuses.
  virtual bool setLoginItem(bool isRegistered) = 0;
  virtual void beep() = 0;
  /// Nothing happens where there are no such settings.
  virtual void openBatterySettings() = 0;
};

}  // namespace lumowatt
