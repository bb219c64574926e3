#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "graphics/color.h"
#include "platform/freedesktop/bus/match.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// What the user set for the whole desktop, as the settings portal has it
/// (org.freedesktop.portal.Settings). Each portal that appears is asked, without waiting for the
/// answer, and followed. Until there is one nothing is set.
class SettingsPortal {
 public:
  /// Calls `colorSchemeChanged`, where there is one, each time that `colorScheme` is another.
  explicit SettingsPortal(sd_bus* bus, std::function<void()> colorSchemeChanged = nullptr);

  /// Whether any switch says so: the appearance settings' reduced-motion, GNOME's enable-animations
  /// or Plasma's AnimationDurationFactor, which is read from Plasma's file where no portal has it.
  bool reducesMotion() const;

  /// The preferred appearance; absent without a preference.
  std::optional<Appearance> colorScheme() const;

  /// The appearance of a window: dark only where that is preferred.
  Appearance appearance() const { return colorScheme().value_or(Appearance::light); }

  /// The color that the user chose for what is selected or alive; the system's where none was.
  Color accentColor() const { return accentColor_; }

 private:
  struct Setting {
    const char* group;
    const char* key;
    const char* type;  ///< as D-Bus has it
    int (SettingsPortal::*read)(sd_bus_message*);
  };
  static const Setting table[];

  void ask();
  int receiveAll(sd_bus_message* reply, sd_bus_error* error);
  int receiveChange(sd_bus_message* signal, sd_bus_error* error);
  void readGroups(sd_bus_message* reply);
  int readSetting(sd_bus_message* message, const char* group, const char* key);
  void notifyIfOther(std::optional<Appearance> before) const;

  // Each reads the value that follows, of the type that the table has. Negative when it cannot be
  // read, as sd-bus has its errors.
  template <auto value>
  int readNumber(sd_bus_message* message);
  int readAccentColor(sd_bus_message* message);
  int readFactor(sd_bus_message* message);
  int readFactorText(sd_bus_message* message);

  sd_bus* bus_;
  std::function<void()> colorSchemeChanged_;
  std::optional<std::uint32_t> reducedMotion_;
  std::optional<std::uint32_t> colorScheme_;
  Color accentColor_ = SystemColor::accent;
  std::optional<std::uint32_t> animations_;    // GNOME's
  std::optional<bool> plasmaHasNoAnimations_;  // by the portal
  BusSlot changes_;
  BusSlot call_;
  NameWatch portals_;
};

}  // namespace lumowatt::freedesktop
