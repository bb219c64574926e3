#pragma once

#include <cstdint>
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
  explicit SettingsPortal(sd_bus* bus);

  /// Less motion by the appearance settings or, where they do not have it, by GNOME's switch for
  /// animations.
  bool reducesMotion() const;

  /// Dark only where that is preferred.
  Appearance appearance() const;

 private:
  struct Setting {
    const char* group;
    const char* key;
    const char* type;  ///< a basic D-Bus type of 32 bits
    std::optional<std::uint32_t> SettingsPortal::*value;
  };
  static const Setting table[];

  void ask();
  int receiveAll(sd_bus_message* reply, sd_bus_error* error);
  int receiveChange(sd_bus_message* signal, sd_bus_error* error);
  int readSetting(sd_bus_message* message, const char* group, const char* key);

  sd_bus* bus_;
  std::optional<std::uint32_t> reducedMotion_;
  std::optional<std::uint32_t> colorScheme_;
  std::optional<std::uint32_t> animations_;
  BusSlot changes_;
  BusSlot call_;
  NameWatch portals_;
};

}  // namespace lumowatt::freedesktop
