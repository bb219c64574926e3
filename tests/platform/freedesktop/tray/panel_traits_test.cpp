#include "platform/freedesktop/tray/panel_traits.h"

#include <gtest/gtest.h>

namespace lumowatt::freedesktop {

namespace {

TitleForm form(std::string_view process) { return panelTraits(process).form; }

}  // namespace

TEST(PanelTraits, SelectsLabelsForPanelsThatShowLabels) {
  // The kernel truncates the names of processes to 15 characters.
  for (const char* const process : {"gnome-shell", "mate-panel", "notification-ar",
                                    "indicator-apple", "ayatana-indicat", "sfwbar", "cairo-dock"}) {
    EXPECT_EQ(form(process), TitleForm::label) << process;
  }
}

TEST(PanelTraits, SelectsAWideIconForPanelsThatShowWideIcons) {
  EXPECT_EQ(form("waybar"), TitleForm::wide);
  EXPECT_EQ(form("xapp-sn-watcher"), TitleForm::wide);
}

TEST(PanelTraits, SelectsTilesForPanelsThatShowOnlyIcons) {
  for (const char* const process : {"kded5",           "kded6",
                                    "lxqt-panel",      "panel-2-systray",
                                    "panel-7-sntray",  "swaybar",
                                    "gnome-flashback", "sni-daemon",
                                    "enlightenment",   "gtk-sni-tray-st",
                                    "budgie-daemon",   "cosmic-applet-s",
                                    "quickshell",      "qs",
                                    "ironbar",         "eww",
                                    "wf-panel",        "nwg-panel",
                                    "qtile",           "status-notifier"}) {
    EXPECT_EQ(form(process), TitleForm::tiles) << process;
  }
}

TEST(PanelTraits, SelectsTilesForUnknownPanels) {
  for (const char* const process :
       {"", ".", "waybar2", "mywaybar", "gnome-shel", "gnome-shell-2", ".waybar", "waybar-wrapped",
        ".waybar-wrap", "ayatana-indica", "xapp-sn-watche"}) {
    EXPECT_EQ(form(process), TitleForm::tiles) << process;
  }
}

TEST(PanelTraits, MatchesWrappedProgramsEvenIfTheNameIsTruncated) {
  EXPECT_EQ(form(".waybar-wrapped"), TitleForm::wide);
  EXPECT_EQ(form(".gnome-shell-wr"), TitleForm::label);
  EXPECT_EQ(form(".sfwbar-wrapped"), TitleForm::label);
  EXPECT_EQ(form(".xapp-sn-watche"), TitleForm::wide);
  EXPECT_EQ(form(".ayatana-indica"), TitleForm::label);
  EXPECT_TRUE(panelTraits(".quickshell-wra").remembersToolTips);
  EXPECT_TRUE(panelTraits(".qs-wrapped").remembersToolTips);
}

TEST(PanelTraits, RequestsLabelSpacingForPanelsThatAddNone) {
  EXPECT_TRUE(panelTraits("gnome-shell").needsLabelSpacing);
  EXPECT_TRUE(panelTraits("mate-panel").needsLabelSpacing);
  EXPECT_TRUE(panelTraits("notification-ar").needsLabelSpacing);
  EXPECT_FALSE(panelTraits("ayatana-indicat").needsLabelSpacing);
  EXPECT_FALSE(panelTraits("indicator-apple").needsLabelSpacing);
}

TEST(PanelTraits, AddsItemsOnTheLeftForSwaybarAndXfceTrays) {
  EXPECT_TRUE(panelTraits("swaybar").addsOnTheLeft);
  for (const char* const process : {"panel-2-systray", "panel-13-systra", "panel-1234-syst"}) {
    EXPECT_TRUE(panelTraits(process).addsOnTheLeft) << process;
  }
  for (const char* const process : {"panel-foo", "panel-2-clock", "panel--systray", "panel-2",
                                    "panel-2-systray2", "kded6", "waybar"}) {
    EXPECT_FALSE(panelTraits(process).addsOnTheLeft) << process;
  }
}

TEST(PanelTraits, IndicatesWhichPanelsRememberToolTips) {
  EXPECT_TRUE(panelTraits("quickshell").remembersToolTips);
  EXPECT_TRUE(panelTraits("qs").remembersToolTips);
  EXPECT_FALSE(panelTraits("lxqt-panel").remembersToolTips);
}

TEST(PanelTraits, IndicatesWhichPanelsShowNoMenus) {
  for (const char* const process : {"swaybar", "qtile", "ironbar", "dde-shell", "dde-dock"}) {
    EXPECT_TRUE(panelTraits(process).hasNoMenus) << process;
  }
  for (const char* const process : {"kded6", "lxqt-panel", "waybar", "gnome-shell", ""}) {
    EXPECT_FALSE(panelTraits(process).hasNoMenus) << process;
  }
}

TEST(PanelTraits, RequestsRegistrationByPathOnlyForCinnamon) {
  EXPECT_TRUE(panelTraits("xapp-sn-watcher").registersPaths);
  EXPECT_FALSE(panelTraits("waybar").registersPaths);
  EXPECT_FALSE(panelTraits("").registersPaths);
}

TEST(PanelTraits, IndicatesHighRowsOnlyForGnome) {
  EXPECT_TRUE(panelTraits("gnome-shell").hasHighRows);
  EXPECT_FALSE(panelTraits("mate-panel").hasHighRows);
}

}  // namespace lumowatt::freedesktop
