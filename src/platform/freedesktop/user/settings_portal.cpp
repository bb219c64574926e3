#include "platform/freedesktop/user/settings_portal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

#include "platform/freedesktop/user/plasma_settings.h"

namespace lumowatt::freedesktop {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto object = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";

constexpr auto appearanceGroup = "org.freedesktop.appearance";
constexpr auto gnomeGroup = "org.gnome.desktop.interface";
constexpr auto plasmaGroup = "org.kde.kdeglobals.KDE";

constexpr std::uint32_t prefersLessMotion = 1;
constexpr std::uint32_t prefersDark = 1;
constexpr std::uint32_t prefersLight = 2;

std::string changeRule() {
  return "type='signal',sender='" + std::string(service) + "',path='" + object + "',interface='" +
         interface + "',member='SettingChanged'";
}

}  // namespace

const SettingsPortal::Setting SettingsPortal::table[] = {
    {appearanceGroup, "reduced-motion", "u",
     &SettingsPortal::readNumber<&SettingsPortal::reducedMotion_>},
    {appearanceGroup, "color-scheme", "u",
     &SettingsPortal::readNumber<&SettingsPortal::colorScheme_>},
    {appearanceGroup, "accent-color", "(ddd)", &SettingsPortal::readAccentColor},
    {gnomeGroup, "enable-animations", "b",
     &SettingsPortal::readNumber<&SettingsPortal::animations_>},
    {plasmaGroup, "AnimationDurationFactor", "d", &SettingsPortal::readFactor},
    {plasmaGroup, "AnimationDurationFactor", "s", &SettingsPortal::readFactorText},
};

SettingsPortal::SettingsPortal(sd_bus* bus, std::function<void()> onColorSchemeChanged)
    : bus_(bus),
      onColorSchemeChanged_(std::move(onColorSchemeChanged)),
      changeSubscription_(
          matchSignals(bus, changeRule(), handle<&SettingsPortal::receiveChange>, this)),
      portalWatch_(bus, service, [this] { requestAll(); }) {
  requestAll();
}

bool SettingsPortal::reducesMotion() const {
  if (reducedMotion_ == prefersLessMotion || animations_ == 0U) return true;
  return plasmaHasNoAnimations_ ? *plasmaHasNoAnimations_ : plasmaFileHasNoAnimations();
}

std::optional<Appearance> SettingsPortal::colorScheme() const {
  if (colorScheme_ == prefersDark) return Appearance::dark;
  if (colorScheme_ == prefersLight) return Appearance::light;
  return std::nullopt;
}

void SettingsPortal::requestAll() {
  sd_bus_call_method_async(bus_, Out(pendingCall_), service, object, interface, "ReadAll",
                           handle<&SettingsPortal::receiveAll>, this, "as", 3, appearanceGroup,
                           gnomeGroup, plasmaGroup);
}

int SettingsPortal::receiveAll(sd_bus_message* reply, sd_bus_error*) {
  const auto before = colorScheme();
  readGroups(reply);
  notifyIfChanged(before);
  return 0;
}

int SettingsPortal::receiveChange(sd_bus_message* signal, sd_bus_error*) {
  const auto before = colorScheme();
  const char* group = nullptr;
  const char* key = nullptr;
  if (sd_bus_message_read(signal, "ss", &group, &key) > 0) readSetting(signal, group, key);
  notifyIfChanged(before);
  return 0;
}

void SettingsPortal::notifyIfChanged(std::optional<Appearance> before) const {
  if (onColorSchemeChanged_ && colorScheme() != before) onColorSchemeChanged_();
}

void SettingsPortal::readGroups(sd_bus_message* reply) {
  // The type is a{sa{sv}}: groups of keys and values. An error reply has other contents.
  if (sd_bus_message_enter_container(reply, 'a', "{sa{sv}}") <= 0) return;
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
}

/// Reads the next value, a variant. Skips a value that has another type than the setting.
int SettingsPortal::readSetting(sd_bus_message* message, const char* group, const char* key) {
  const char* type = nullptr;
  if (const int status = sd_bus_message_peek_type(message, nullptr, &type); status < 0) {
    return status;
  }
  if (type == nullptr) return -EBADMSG;  // not a variant
  const auto* const setting = std::ranges::find_if(table, [&](const Setting& each) {
    return std::string_view(each.group) == group && std::string_view(each.key) == key &&
           std::string_view(each.type) == type;
  });
  if (setting == std::ranges::end(table)) return sd_bus_message_skip(message, "v");
  int status = sd_bus_message_enter_container(message, 'v', type);
  if (status >= 0) status = (this->*setting->read)(message);
  return status < 0 ? status : sd_bus_message_exit_container(message);
}

template <auto value>
int SettingsPortal::readNumber(sd_bus_message* message) {
  // A Boolean has 32 bits too.
  char type = 0;
  sd_bus_message_peek_type(message, &type, nullptr);
  std::uint32_t number = 0;
  const int status = sd_bus_message_read_basic(message, type, &number);
  if (status > 0) this->*value = number;
  return status;
}

int SettingsPortal::readAccentColor(sd_bus_message* message) {
  CalibratedRgb color{};
  const int status = sd_bus_message_read(message, "(ddd)", &color.red, &color.green, &color.blue);
  if (status <= 0) return status;
  const std::array components{color.red, color.green, color.blue};
  const bool isColor = std::ranges::all_of(
      components, [](double component) { return component >= 0.0 && component <= 1.0; });
  accentColor_ = isColor ? Color(color) : SystemColor::accent;  // invalid: no color is set
  return status;
}

int SettingsPortal::readFactor(sd_bus_message* message) {
  double factor = 1.0;
  const int status = sd_bus_message_read(message, "d", &factor);
  if (status > 0) plasmaHasNoAnimations_ = factor == 0.0;
  return status;
}

int SettingsPortal::readFactorText(sd_bus_message* message) {
  const char* factor = nullptr;
  const int status = sd_bus_message_read(message, "s", &factor);
  if (status > 0) plasmaHasNoAnimations_ = isZeroFactor(factor);
  return status;
}

}  // namespace lumowatt::freedesktop
