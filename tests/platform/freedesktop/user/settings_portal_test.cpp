#include "platform/freedesktop/user/settings_portal.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/panel_connection.h"

namespace lumowatt::freedesktop {

namespace {

/// Fixture with a connection to a peer that acts as the portal.
class SettingsPortalTest : public testing::Test {
 protected:
  /// Connects to a portal with this value of "color-scheme".
  void readSettings(std::uint32_t colorScheme) {
    scheme_ = colorScheme;
    settings.emplace(connection.bus(), [this] { ++changes; });
    connection.processMessages();
  }

  PanelConnection connection{[this](sd_bus_message* message) {
    if (sd_bus_message_is_method_call(message, "org.freedesktop.portal.Settings", "ReadAll") > 0) {
      sd_bus_reply_method_return(message, "a{sa{sv}}", 1, "org.freedesktop.appearance", 1,
                                 "color-scheme", "u", scheme_);
    }
  }};
  std::optional<SettingsPortal> settings;
  int changes = 0;

 private:
  std::uint32_t scheme_ = 0;
};

}  // namespace

TEST_F(SettingsPortalTest, ReportsADarkColorScheme) {
  readSettings(1);
  EXPECT_EQ(settings->colorScheme(), Appearance::dark);
  EXPECT_EQ(settings->appearance(), Appearance::dark);
  EXPECT_EQ(changes, 1);
}

TEST_F(SettingsPortalTest, ReportsALightColorScheme) {
  readSettings(2);
  EXPECT_EQ(settings->colorScheme(), Appearance::light);
  EXPECT_EQ(settings->appearance(), Appearance::light);
  EXPECT_EQ(changes, 1);
}

TEST_F(SettingsPortalTest, ReportsNoSchemeAndNoChangeWithoutAPreference) {
  for (const std::uint32_t none : {0U, 3U}) {
    readSettings(none);
    EXPECT_EQ(settings->colorScheme(), std::nullopt);
    EXPECT_EQ(settings->appearance(), Appearance::light);
  }
  EXPECT_EQ(changes, 0);
}

}  // namespace lumowatt::freedesktop
