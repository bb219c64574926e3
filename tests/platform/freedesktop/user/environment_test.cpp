#include "platform/freedesktop/user/environment.h"

#include <gtest/gtest.h>

#include "support/environment.h"

namespace lumowatt::freedesktop {

TEST(EnvironmentVariable, IsEmptyIfNotSet) {
  const ScopedVariable none("LUMOWATT_TEST_VARIABLE", std::nullopt);
  EXPECT_EQ(environmentVariable("LUMOWATT_TEST_VARIABLE"), "");
  const ScopedVariable some("LUMOWATT_TEST_VARIABLE", "value");
  EXPECT_EQ(environmentVariable("LUMOWATT_TEST_VARIABLE"), "value");
}

TEST(CurrentDesktops, AreTheNonEmptyNamesInOrder) {
  const ScopedVariable several("XDG_CURRENT_DESKTOP", ":sway::wlroots:");
  EXPECT_EQ(currentDesktops(), (std::vector<std::string>{"sway", "wlroots"}));
  for (const auto& value : {std::optional<std::string>(""), std::optional<std::string>()}) {
    const ScopedVariable none("XDG_CURRENT_DESKTOP", value);
    EXPECT_EQ(currentDesktops(), std::vector<std::string>());
  }
}

TEST(IsCurrentDesktop, MatchesWholeNamesCaseSensitively) {
  const ScopedVariable several("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
  EXPECT_TRUE(isCurrentDesktop("ubuntu"));
  EXPECT_TRUE(isCurrentDesktop("GNOME"));
  EXPECT_FALSE(isCurrentDesktop("gnome"));
  EXPECT_FALSE(isCurrentDesktop("GNO"));
  const ScopedVariable none("XDG_CURRENT_DESKTOP", std::nullopt);
  EXPECT_FALSE(isCurrentDesktop("GNOME"));
}

TEST(ConfigurationFolder, IsTheValueOfXdgConfigHome) {
  const ScopedVariable configuration("XDG_CONFIG_HOME", "/somewhere/config");
  EXPECT_EQ(configurationFolder(), "/somewhere/config");
}

TEST(ConfigurationFolder, FallsBackToTheHomeFolder) {
  const ScopedVariable home("HOME", "/home/anna");
  for (const char* value : {"", "relative/config"}) {
    const ScopedVariable configuration("XDG_CONFIG_HOME", value);
    EXPECT_EQ(configurationFolder(), "/home/anna/.config");
  }
  const ScopedVariable configuration("XDG_CONFIG_HOME", std::nullopt);
  EXPECT_EQ(configurationFolder(), "/home/anna/.config");
}

TEST(ConfigurationFolder, IsEmptyWithoutAHomeFolder) {
  const ScopedVariable configuration("XDG_CONFIG_HOME", std::nullopt);
  const ScopedVariable home("HOME", std::nullopt);
  EXPECT_EQ(configurationFolder(), "");
}

TEST(ConfigurationFile, IsInTheConfigurationFolderOrEmpty) {
  {
    const ScopedVariable configuration("XDG_CONFIG_HOME", "/etc/mine");
    EXPECT_EQ(configurationFile("lumowatt/preferences"), "/etc/mine/lumowatt/preferences");
  }
  const ScopedVariable configuration("XDG_CONFIG_HOME", std::nullopt);
  const ScopedVariable home("HOME", std::nullopt);
  EXPECT_EQ(configurationFile("lumowatt/preferences"), "");
}

TEST(RuntimeFolder, IsAnAbsolutePathOrEmpty) {
  const ScopedVariable absolute("XDG_RUNTIME_DIR", "/run/user/1000");
  EXPECT_EQ(runtimeFolder(), "/run/user/1000");
  const ScopedVariable relative("XDG_RUNTIME_DIR", "run");
  EXPECT_EQ(runtimeFolder(), "");
  const ScopedVariable none("XDG_RUNTIME_DIR", std::nullopt);
  EXPECT_EQ(runtimeFolder(), "");
}

}  // namespace lumowatt::freedesktop
