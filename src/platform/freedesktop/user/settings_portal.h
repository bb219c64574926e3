#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "graphics/color.h"
#include "platform/freedesktop/bus/match.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Settings of the desktop, as reported by the settings portal (org.freedesktop.portal.Settings).
/// Queries each portal that appears, without blocking, and subscribes to its changes. All settings
/// are unset until a portal replies.
class SettingsPortal {
 public:
  /// Calls `onColorSchemeChanged`, if set, after each change of `colorScheme`.
  explicit SettingsPortal(sd_bus* bus, std::function<void()> onColorSchemeChanged = nullptr);

  /// Returns whether one of these settings reduces motion: reduced-motion of the appearance
  /// settings, enable-animations of GNOME or AnimationDurationFactor of Plasma. Reads Plasma's
  /// factor from Plasma's file if no portal has reported it.
  bool reducesMotion() const;

  /// Returns the preferred appearance; std::nullopt if the user has no preference.
  std::optional<Appearance> colorScheme() const;

  /// Returns the appearance of a window: dark only if the user prefers dark.
  Appearance appearance() const { return colorScheme().value_or(Appearance::light); }

  /// Returns the user's color for selected and active elements; the system's accent color if the
  /// user has not chosen a color.
  Color accentColor() const { return accentColor_; }

 private:
  struct Setting {
    const char* group;
    const char* key;
    const char* type;  ///< D-Bus signature
    int (SettingsPortal::*read)(sd_bus_message*);
  };
  static const Setting table[];

  void requestAll();
  int receiveAll(sd_bus_message* reply, sd_bus_error* error);
  int receiveChange(sd_bus_message* signal, sd_bus_error* error);
  void readGroups(sd_bus_message* reply);
  int readSetting(sd_bus_message* message, const char* group, const char* key);
  void notifyIfChanged(std::optional<Appearance> before) const;

  // Each function reads the next value, which has the type in the table. Returns a negative errno
  // on failure, as sd-bus does.
  template <auto value>
  int readNumber(sd_bus_message* message);
  int readAccentColor(sd_bus_message* message);
  int readFactor(sd_bus_message* message);
  int readFactorText(sd_bus_message* message);

  sd_bus* bus_;
  std::function<void()> onColorSchemeChanged_;
  std::optional<std::uint32_t> reducedMotion_;
  std::optional<std::uint32_t> colorScheme_;
  Color accentColor_ = SystemColor::accent;
  std::optional<std::uint32_t> animations_;    // reported by GNOME
  std::optional<bool> plasmaHasNoAnimations_;  // reported by a portal
  BusSlot changeSubscription_;
  BusSlot pendingCall_;
  NameWatch portalWatch_;
};

}  // namespace lumowatt::freedesktop
