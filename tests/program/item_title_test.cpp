// The title in panels that show a label or wide icons.

#include <algorithm>
#include <csignal>

#include "program/title_fixture.h"

namespace lumowatt {

namespace {

/// Fixture with a panel that shows wide icons.
class WideTitleIcon : public TitleTest {
 protected:
  WideTitleIcon() : TitleTest("waybar") {}

  std::string icon() const { return panel->property("IconName"); }
};

/// Fixture with a panel that shows labels.
class TitleLabel : public TitleTest {
 protected:
  TitleLabel() : TitleTest("gnome-shell") {}
};

}  // namespace

TEST_F(WideTitleIcon, ShowsTheGlyphAndTheTitleInOneItem) {
  start();
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), 1U);
  ASSERT_EQ(iconFiles().size(), 1U);
  EXPECT_EQ(icon(), icons() / (iconFiles()[0] + ".svg"));
  EXPECT_EQ(pathCount(fileContents(icon())), 5)
      << "the plate, the glyph, the percentage, the arrow, the power";
}

TEST_F(WideTitleIcon, ChangesIfTheModeTheColorsOrTheGlyphChange) {
  start();
  panel->open();
  panel->clearSignals();
  std::vector<std::string> icons{icon()};
  const auto next = [&] {
    panel->waitForSignal("NewIcon");
    icons.push_back(icon());
    EXPECT_EQ(iconFiles().size(), 1U);
    panel->clearSignals();
  };
  chooseMode(menu_id::allFigures);
  next();
  machine.set("BAT0/capacity", "8");
  machine.set("BAT0/energy_now", "4000000");
  panel->open();
  next();
  constexpr auto red = "rgb(100%,27.059%,22.745%)";  // #ff453a
  EXPECT_NE(fileContents(icon()).find(red), std::string::npos) << "the glyph";
  choose(menu_id::colors, "Colors");
  next();
  EXPECT_EQ(fileContents(icon()).find(red), std::string::npos);
  std::ranges::sort(icons);
  EXPECT_EQ(std::ranges::adjacent_find(icons), icons.end());
}

TEST_F(WideTitleIcon, EmitsNoSignalsWhenNothingChanged) {
  start();
  panel->open();
  panel->clearSignals();
  panel->open();
  EXPECT_EQ(panel->signalNames(), Names{});
}

TEST_F(WideTitleIcon, ShowsTextBesideTheGlyphWithoutABattery) {
  start();
  machine.remove("BAT0");
  panel->open();
  panel->waitForSignal("NewIcon");
  EXPECT_EQ(pathCount(fileContents(icon())), 3) << "the plate, the glyph, the words";
}

TEST_F(WideTitleIcon, FallsBackToTheGlyphWithoutARuntimeFolder) {
  variables = {{"XDG_RUNTIME_DIR", ""}};
  start();
  EXPECT_EQ(icon(), "lumowatt-battery-100percent-symbolic");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot show the title in the icon: the session has no runtime folder\n");
}

TEST_F(WideTitleIcon, IsShownOnceItsFolderCanBeCreated) {
  user.write("runtime/lumowatt", "in the way");
  start();
  EXPECT_EQ(icon(), "lumowatt-battery-100percent-symbolic");
  std::filesystem::remove(icons());
  panel->open();
  panel->waitForSignal("NewIcon");
  EXPECT_EQ(icon(), icons() / (iconFiles().at(0) + ".svg"));
}

TEST_F(WideTitleIcon, IsReplacedByTheGlyphInALabelPanel) {
  start();
  replacePanel("gnome-shell");
  panel->waitForItem();
  EXPECT_EQ(icon(), "lumowatt-battery-100percent-symbolic");
  EXPECT_EQ(iconFiles(), Names{});
}

TEST_F(WideTitleIcon, LeavesNoFilesAfterSigterm) {
  start();
  EXPECT_EQ(iconFiles().size(), 1U);
  item->send(SIGTERM);
  expectResult(item->wait(), "", 0);
  EXPECT_FALSE(std::filesystem::exists(icons()));
}

TEST_F(WideTitleIcon, HasNoLabelBesideIt) {
  start();
  EXPECT_EQ(panel->property("XAyatanaLabel"), "");
  EXPECT_EQ(panel->property("ToolTip").at(2), "98% ▼ −4.8 W");
}

TEST_F(TitleLabel, BeginsWithASpaceInPanelsThatAddNoSpacing) {
  start();
  EXPECT_EQ(panel->property("XAyatanaLabel"), " 98% ▼ −4.8 W");
  EXPECT_EQ(panel->property("ToolTip").at(2), "98% ▼ −4.8 W");
  replacePanel("indicator-apple");
  panel->waitForItem();
  EXPECT_EQ(panel->property("XAyatanaLabel"), "98% ▼ −4.8 W");
}

TEST_F(TitleLabel, IsShownWithoutTilesAndIconFiles) {
  start();
  chooseMode(menu_id::allFigures);
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-100percent-symbolic");
  EXPECT_EQ(iconFiles(), Names{});
}

TEST_F(TitleLabel, IsReplacedByTilesInAnIconPanel) {
  start();
  replacePanel("kded5");
  panel->waitForItems(2);
  EXPECT_EQ(panel->property("Title", connection(1)), "Lumowatt title");
}

}  // namespace lumowatt
