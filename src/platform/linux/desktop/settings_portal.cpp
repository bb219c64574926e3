#include "platform/linux/desktop/settings_portal.h"

#include <string_view>

namespace lumowatt::desktop {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto object = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";

constexpr auto appearanceGroup = "org.freedesktop.appearance";
constexpr auto gnomeGroup = "org.gnome.desktop.interface";

constexpr std::uint32_t prefersLessMotion = 1;
constexpr std::uint32_t prefersDark = 1;

/// Reads a variant. It is left out, and nothing is set, when it holds another type.
template <typename Wire, typename T>
int readVariant(sd_bus_message* message, const char* type, std::optional<T>& setting) {
  const char* contents = nullptr;
  if (const int status = sd_bus_message_peek_type(message, nullptr, &contents); status < 0) {
    return status;
  }
  if (std::string_view(contents) != type) return sd_bus_message_skip(message, "v");
  Wire value{};
  const int status = sd_bus_message_read(message, "v", type, &value);
  if (status > 0) setting = static_cast<T>(value);
  return status;
}

}  // namespace

SettingsPortal::SettingsPortal(sd_bus* bus) {
  sd_bus_slot* slot = nullptr;
  if (sd_bus_match_signal_async(bus, &slot, service, object, interface, "SettingChanged",
                                handle<&SettingsPortal::receiveChange>, nullptr, this) >= 0) {
    changes_.reset(slot);
  }
  if (sd_bus_call_method_async(bus, &slot, service, object, interface, "ReadAll",
                               handle<&SettingsPortal::receiveAll>, this, "as", 2, appearanceGroup,
                               gnomeGroup) >= 0) {
    call_.reset(slot);
  }
}

bool SettingsPortal::reducesMotion() const {
  return reducedMotion_ ? *reducedMotion_ == prefersLessMotion : !animations_.value_or(true);
}

Appearance SettingsPortal::appearance() const {
  return colorScheme_ == prefersDark ? Appearance::dark : Appearance::light;
}

int SettingsPortal::receiveAll(sd_bus_message* reply, sd_bus_error*) {
  // a{sa{sv}}: groups of keys and their values. An error has no such contents.
  if (sd_bus_message_enter_container(reply, 'a', "{sa{sv}}") <= 0) return 0;
  const char* group = nullptr;
  const char* key = nullptr;
  while (sd_bus_message_enter_container(reply, 'e', "sa{sv}") > 0 &&
         sd_bus_message_read(reply, "s", &group) > 0 &&
         sd_bus_message_enter_container(reply, 'a', "{sv}") >= 0) {
    while (sd_bus_message_enter_container(reply, 'e', "sv") > 0 &&
           sd_bus_message_read(reply, "s", &key) > 0 && readSetting(reply, group, key) >= 0) {
      sd_bus_message_exit_container(reply);
    }
    sd_bus_message_exit_container(reply);
    sd_bus_message_exit_container(reply);
  }
  return 0;
}

int SettingsPortal::receiveChange(sd_bus_message* signal, sd_bus_error*) {
  const char* group = nullptr;
  const char* key = nullptr;
  if (sd_bus_message_read(signal, "ss", &group, &key) > 0) readSetting(signal, group, key);
  return 0;
}

int SettingsPortal::readSetting(sd_bus_message* message, const char* group, const char* key) {
  const std::string_view name = key;
  if (group == std::string_view(appearanceGroup) && name == "reduced-motion") {
    return readVariant<std::uint32_t>(message, "u", reducedMotion_);
  }
  if (group == std::string_view(appearanceGroup) && name == "color-scheme") {
    return readVariant<std::uint32_t>(message, "u", colorScheme_);
  }
  if (group == std::string_view(gnomeGroup) && name == "enable-animations") {
    return readVariant<int>(message, "b", animations_);
  }
  return sd_bus_message_skip(message, "v");
}

}  // namespace lumowatt::desktop
