#include "platform/freedesktop/user/settings_portal.h"

#include <string>
#include <string_view>

namespace lumowatt::freedesktop {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto object = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";

constexpr auto appearanceGroup = "org.freedesktop.appearance";
constexpr auto gnomeGroup = "org.gnome.desktop.interface";

constexpr std::uint32_t prefersLessMotion = 1;
constexpr std::uint32_t prefersDark = 1;

std::string changeRule() {
  return "type='signal',sender='" + std::string(service) + "',path='" + object + "',interface='" +
         interface + "',member='SettingChanged'";
}

}  // namespace

const SettingsPortal::Setting SettingsPortal::table[] = {
    {appearanceGroup, "reduced-motion", "u", &SettingsPortal::reducedMotion_},
    {appearanceGroup, "color-scheme", "u", &SettingsPortal::colorScheme_},
    {gnomeGroup, "enable-animations", "b", &SettingsPortal::animations_},
};

SettingsPortal::SettingsPortal(sd_bus* bus)
    : bus_(bus),
      changes_(matchSignals(bus, changeRule(), handle<&SettingsPortal::receiveChange>, this)),
      portals_(bus, service, [this] { ask(); }) {
  ask();
}

bool SettingsPortal::reducesMotion() const {
  return reducedMotion_ ? *reducedMotion_ == prefersLessMotion : animations_ == 0U;
}

Appearance SettingsPortal::appearance() const {
  return colorScheme_ == prefersDark ? Appearance::dark : Appearance::light;
}

void SettingsPortal::ask() {
  sd_bus_call_method_async(bus_, Out(call_), service, object, interface, "ReadAll",
                           handle<&SettingsPortal::receiveAll>, this, "as", 2, appearanceGroup,
                           gnomeGroup);
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

/// Reads the value that follows, a variant. One of another type sets nothing.
int SettingsPortal::readSetting(sd_bus_message* message, const char* group, const char* key) {
  const char* type = nullptr;
  if (const int status = sd_bus_message_peek_type(message, nullptr, &type); status < 0) {
    return status;
  }
  for (const Setting& setting : table) {
    if (std::string_view(setting.group) != group || std::string_view(setting.key) != key ||
        std::string_view(setting.type) != type) {
      continue;
    }
    std::uint32_t value = 0;
    const int status = sd_bus_message_read(message, "v", type, &value);
    if (status > 0) this->*setting.value = value;
    return status;
  }
  return sd_bus_message_skip(message, "v");
}

}  // namespace lumowatt::freedesktop
