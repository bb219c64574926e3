// The title on panels that show icons alone.

#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "program/title_fixture.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

/// How many curves an icon's paths have.
std::ptrdiff_t curveCount(const std::string& svg) { return std::ranges::count(svg, 'C'); }

/// A panel that shows icons alone.
class Tiles : public TitleTest {
 protected:
  Tiles() : TitleTest("panel-2-systray") {}

  void startWithTile() {
    start();
    panel->waitForItems(2);
    panel->open();
  }

  /// The icon of the tile that was registered as the `index`th.
  std::string icon(std::size_t index) const {
    return panel->property("IconName", connection(index));
  }
  std::string iconContents(std::size_t index) const {
    return fileContents(icons() / (icon(index) + ".svg"));
  }
};

/// The same on a bus that takes no more than the panel and one connection of the application's.
class CrowdedTiles : public TitleTest {
 protected:
  CrowdedTiles()
      : TitleTest("panel-2-systray", "<limit name='max_connections_per_user'>2</limit>") {}
};

}  // namespace

TEST_F(Tiles, AreItemsOfTheirOwnBesideTheGlyph) {
  startWithTile();
  ASSERT_EQ(panel->registered.size(), 2U);
  EXPECT_EQ(panel->property("Id", connection(0)), "Lumowatt");
  EXPECT_EQ(panel->property("Title", connection(0)), "Lumowatt");
  EXPECT_EQ(panel->property("IconName", connection(0)), "lumowatt-battery-100percent-symbolic");
  EXPECT_EQ(panel->property("Id", connection(1)), "Lumowatt");
  EXPECT_EQ(panel->property("Title", connection(1)), "Lumowatt title");
  EXPECT_EQ(panel->property("IconThemePath", connection(1)), icons().string());
  EXPECT_EQ(iconFiles(), Names{icon(1)});
  EXPECT_EQ(pathCount(iconContents(1)), 2);
}

TEST_F(Tiles, AreRegisteredOneAfterTheOtherAsThePanelReadsThem) {
  user.write("config/lumowatt/preferences", "mode=3\n");
  panel->readsItems = false;
  start();
  const OpenCounter counter;
  counter.watch(machine.powerSupplyFolder() / "BAT0");
  panel->property("Title", connection(0));
  EXPECT_EQ(panel->registered.size(), 1U);
  panel->property("IconName", connection(0));
  panel->waitForItems(2);
  panel->property("Title", connection(1));
  EXPECT_EQ(panel->registered.size(), 2U);
  icon(1);
  panel->waitForItems(3);
  EXPECT_TRUE(counter.opened().empty()) << "they do not wait for the next reading";
}

TEST_F(Tiles, AreRegisteredInAPanelThatDoesNotReadThem) {
  user.write("config/lumowatt/preferences", "mode=3\n");
  panel->readsItems = false;
  start();
  panel->waitForItems(3);
}

TEST_F(Tiles, HaveTheTextsOfTheGlyph) {
  startWithTile();
  for (const char* property : {"ToolTip", "XAyatanaLabel", "IconAccessibleDesc", "Category",
                               "Status", "ItemIsMenu", "Menu"}) {
    EXPECT_EQ(panel->property(property, connection(1)), panel->property(property, connection(0)))
        << property;
  }
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  EXPECT_EQ(panel->property("ToolTip", connection(1)).at(2), "98% ▼ −6.1 W");
  EXPECT_EQ(panel->property("IconAccessibleDesc", connection(1)),
            "Battery 98 percent, On battery, −6.1 W");
}

TEST_F(Tiles, HaveTheMenuOfTheGlyph) {
  startWithTile();
  const auto layout = [this](std::size_t index) {
    sd_bus_message* const call =
        panel->newCall(connection(index), "/MenuBar", "com.canonical.dbusmenu", "GetLayout");
    EXPECT_GE(sd_bus_message_append(call, "iias", 0, -1, 0), 0);
    return panel->answer(call).values.at(1);
  };
  EXPECT_EQ(layout(1), layout(0));
  EXPECT_EQ(layout(1).at(2).size(), 22U);
}

TEST_F(Tiles, ChangeTheirIconWithTheText) {
  startWithTile();
  const std::string before = icon(1);
  panel->forgetSignals();
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitForSignal("NewIcon");
  EXPECT_NE(icon(1), before);
  EXPECT_EQ(iconFiles(), Names{icon(1)}) << "the old one is removed";
  const auto signals = panel->signalNames(connection(1));
  EXPECT_EQ(std::ranges::count(signals, "NewIcon"), 1);
  const auto ofGlyph = panel->signalNames(connection(0));
  EXPECT_EQ(std::ranges::count(ofGlyph, "NewIcon"), 0);
}

TEST_F(Tiles, HaveAnIconAgainThatTheyHadBefore) {
  startWithTile();
  const std::string before = icon(1);
  for (const char* power : {"6100000", "4830000"}) {
    panel->forgetSignals();
    machine.set("BAT0/power_now", power);
    panel->open();
    panel->waitForSignal("NewIcon");
  }
  EXPECT_EQ(icon(1), before);
}

TEST_F(Tiles, TellNothingWhenNothingChanged) {
  startWithTile();
  panel->open();
  panel->forgetSignals();
  panel->open();
  panel->open();
  EXPECT_EQ(panel->signalNames(), Names{});
}

TEST_F(Tiles, FollowTheModeAtOnce) {
  startWithTile();
  std::vector<std::string> icons{icon(1)};
  for (const int mode : {menu_id::percent, menu_id::percentTime, menu_id::percentPower}) {
    panel->forgetSignals();
    chooseMode(mode);
    panel->waitForSignal("NewIcon");
    icons.push_back(icon(1));
    EXPECT_EQ(panel->registered.size(), 2U);
  }
  EXPECT_NE(icons[1], icons[0]);
  EXPECT_NE(icons[2], icons[0]);
  EXPECT_NE(icons[2], icons[1]);
  EXPECT_EQ(icons[3], icons[0]);
}

TEST_F(Tiles, AreTwoForEverything) {
  startWithTile();
  chooseMode(menu_id::allFigures);
  panel->waitForItems(3);
  EXPECT_EQ(panel->property("Id", connection(2)), "Lumowatt") << "one for all";
  EXPECT_EQ(panel->property("Title", connection(2)), "Lumowatt title 2");
  Names expected{icon(1), icon(2)};
  Names found = iconFiles();
  std::ranges::sort(expected);
  std::ranges::sort(found);
  EXPECT_EQ(found, expected);
  EXPECT_EQ(panel->property("ToolTip", connection(2)), panel->property("ToolTip"));

  chooseMode(menu_id::percentPower);
  panel->waitUntil([this] { return !isThere(2); });
  EXPECT_TRUE(isThere(1));
  EXPECT_EQ(iconFiles(), Names{icon(1)});
}

TEST_F(Tiles, HaveTheirTitleInTheToolTipAndInNoLabel) {
  startWithTile();
  EXPECT_EQ(panel->property("XAyatanaLabel"), "");
  EXPECT_EQ(panel->property("XAyatanaLabelGuide"), "");
  EXPECT_EQ(panel->property("ToolTip").at(2), "98% ▼ −4.8 W");
}

TEST_F(Tiles, ReadFromTheLeftAlsoWhereNewItemsAreAddedThere) {
  machine.set("BAT0/capacity", "11");
  startWithTile();
  chooseMode(menu_id::allFigures);
  panel->waitForItems(3);
  const std::string first = iconContents(2);
  const std::string second = iconContents(1);
  replacePanel("kded6");
  panel->waitForItems(3);
  EXPECT_EQ(iconContents(1), first);
  EXPECT_EQ(iconContents(2), second);
  // Only the signs of "11%" over the arrow have curves, of "−4.8" over "10:14" most digits.
  EXPECT_LT(curveCount(first), curveCount(second));
}

TEST_F(Tiles, ChoosingFromTheMenuOfATileThatGoesAwayByItIsDone) {
  startWithTile();
  chooseMode(menu_id::allFigures);
  panel->waitForItems(3);
  sd_bus_message* const call =
      panel->newCall(connection(2), "/MenuBar", "com.canonical.dbusmenu", "AboutToShow");
  EXPECT_GE(sd_bus_message_append(call, "i", 0), 0);
  EXPECT_EQ(panel->answer(call).error, "");
  sd_bus_message* const choice =
      panel->newCall(connection(2), "/MenuBar", "com.canonical.dbusmenu", "Event");
  EXPECT_GE(sd_bus_message_append(choice, "isvu", menu_id::percent, "clicked", "i", 0, 0U), 0);
  EXPECT_EQ(panel->answer(choice).error, "");
  panel->waitUntil([this] { return !isThere(2); });
  EXPECT_TRUE(item->isRunning());
  EXPECT_EQ(fileContents(preferences()), "mode=0\n");
}

TEST_F(Tiles, AChoiceIsTickedInTheMenusOfAll) {
  startWithTile();
  const auto isTicked = [this](std::size_t index) {
    sd_bus_message* const call =
        panel->newCall(connection(index), "/MenuBar", "com.canonical.dbusmenu", "GetProperty");
    EXPECT_GE(sd_bus_message_append(call, "is", menu_id::colors, "toggle-state"), 0);
    return panel->answer(call).values.at(0) == 1;
  };
  EXPECT_TRUE(isTicked(1));
  choose(menu_id::colors, "Colors");  // in the glyph's
  EXPECT_FALSE(isTicked(0));
  EXPECT_FALSE(isTicked(1));
}

TEST_F(Tiles, AMenuThatWasOpenedElsewhereHasTheSameRows) {
  startWithTile();
  const auto rowsOf = [this](std::size_t index) {
    sd_bus_message* const call =
        panel->newCall(connection(index), "/MenuBar", "com.canonical.dbusmenu", "GetLayout");
    EXPECT_GE(sd_bus_message_append(call, "iias", 0, 1, 0), 0);
    return panel->answer(call).values.at(1).at(2).size();
  };
  const auto before = rowsOf(1);
  machine.set("BAT0/temp", "301");
  panel->open();  // the glyph's
  panel->waitUntil([&] { return rowsOf(1) == before + 1; });
}

TEST_F(Tiles, HaveTheColorsOfTheTrendAndWithoutColorsNone) {
  machine.set("BAT0/power_now", "21000000");
  startWithTile();
  EXPECT_NE(iconContents(1).find("#e07600"), std::string::npos);
  panel->forgetSignals();
  choose(menu_id::colors, "Colors");
  panel->waitForSignal("NewIcon");
  EXPECT_EQ(iconContents(1).find("#e07600"), std::string::npos);
}

TEST_F(Tiles, AreAwayWhileThereIsNoBattery) {
  startWithTile();
  machine.remove("BAT0");
  panel->open();
  panel->waitUntil([this] { return !isThere(1); });
  EXPECT_EQ(iconFiles(), Names{});
  EXPECT_EQ(panel->property("XAyatanaLabel"), "");
  EXPECT_EQ(panel->property("ToolTip").at(2), "No battery");
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-slash-symbolic");
}

TEST_F(Tiles, AreRegisteredWithAPanelThatComesLater) {
  panel.reset();
  start();
  const BusPeer other(session);
  other.waitUntil([&other] { return other.isOwned(Panel::application); });
  replacePanel("kded6");
  panel->waitForItems(2);
  EXPECT_EQ(panel->property("Title", connection(1)), "Lumowatt title");
}

TEST_F(Tiles, AreRegisteredAgainWithAnotherPanelOfTheKind) {
  startWithTile();
  replacePanel("lxqt-panel");
  panel->waitForItems(2);
  EXPECT_EQ(panel->property("Title", connection(1)), "Lumowatt title");
  EXPECT_EQ(iconFiles(), Names{icon(1)});
}

TEST_F(Tiles, GiveWayToTheLabelInAPanelThatShowsIt) {
  startWithTile();
  const std::string tile = panel->registered[1];
  replacePanel("gnome-shell");
  panel->waitForItem();
  panel->waitUntil([&] { return !panel->isOwned(tile.c_str()); });
  panel->settle();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_EQ(iconFiles(), Names{});
  EXPECT_EQ(panel->property("Id"), "Lumowatt");
}

TEST_F(Tiles, GiveWayToAWideIcon) {
  startWithTile();
  const std::string tile = panel->registered[1];
  replacePanel("waybar");
  panel->waitForItem();
  panel->waitUntil([&] { return !panel->isOwned(tile.c_str()); });
  panel->settle();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_TRUE(panel->property("IconName").get<std::string>().starts_with(icons().string()));
}

TEST_F(Tiles, LeaveNoFileAtTheEnd) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    startWithTile();
    EXPECT_EQ(iconFiles().size(), 1U);
    item->send(signal);
    expectResult(item->wait(), "", 0);
    EXPECT_FALSE(std::filesystem::exists(icons()));
    stop();
  }
}

TEST_F(Tiles, LeaveNoFileWhenQuit) {
  startWithTile();
  choose(menu_id::quit, "Quit Lumowatt");
  expectResult(item->wait(), "", 0);
  EXPECT_FALSE(std::filesystem::exists(icons()));
}

TEST_F(Tiles, LeaveNoFileWhenTheSessionGoesAway) {
  startWithTile();
  session.end();
  expectResult(item->wait(), "error=session bus lost\n", 1);
  EXPECT_FALSE(std::filesystem::exists(icons()));
}

TEST_F(Tiles, LeaveAtMostThePresentFilesWhenKilledAndTheNextRunRemovesThem) {
  startWithTile();
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitForSignal("NewIcon");
  const Names present{icon(1)};
  item->send(SIGKILL);
  item->wait();
  EXPECT_EQ(iconFiles(), present);
  stop();
  machine.set("BAT0/power_now", "7200000");
  startWithTile();
  EXPECT_EQ(iconFiles(), Names{icon(1)});
  EXPECT_NE(icon(1), present[0]);
}

TEST_F(Tiles, WithoutARuntimeFolderTheGlyphIsAlone) {
  variables = {{"XDG_RUNTIME_DIR", ""}};
  start();
  panel->open();
  chooseMode(menu_id::allFigures);
  panel->settle();
  EXPECT_EQ(panel->registered.size(), 1U);
  item->send(SIGTERM);
  const ProcessResult result = item->wait();
  EXPECT_EQ(result.errors,
            "lumowatt: cannot show the title beside the glyph: the session has no runtime "
            "folder\n")
      << "once, however often it is tried";
  EXPECT_EQ(result.status, 0);
}

TEST_F(Tiles, ThatCannotBeWrittenAreAwayRatherThanOld) {
  startWithTile();
  // What is no folder is in the folder's place, and the file with it is gone.
  std::filesystem::remove_all(icons());
  user.write("runtime/lumowatt", "");
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitUntil([this] { return !isThere(1); });
  std::filesystem::remove(icons());
  panel->open();
  panel->waitForItems(3);
  EXPECT_EQ(iconFiles(), Names{icon(2)});
  EXPECT_EQ(panel->property("Title", connection(2)), "Lumowatt title");
}

TEST_F(Tiles, ThatFindNoSpaceAreAwayAndLeaveNoFile) {
  item = startAnother(LUMOWATT_REFUSING_SPACE);
  panel->waitForItem();
  panel->open();
  panel->settle();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_EQ(iconFiles(), Names{});
}

TEST_F(Tiles, ThatCouldNotBeWrittenAreShownLaterThoughTheTextIsTheSame) {
  user.write("runtime/lumowatt", "");
  start();
  panel->settle();
  EXPECT_EQ(panel->registered.size(), 1U);
  std::filesystem::remove(icons());
  panel->open();
  panel->waitForItems(2);
  EXPECT_EQ(iconFiles(), Names{icon(1)});
}

TEST_F(Tiles, WhoseConnectionIsLostComeBack) {
  startWithTile();
  // The newest socket of the process is the tile's.
  const int process = static_cast<int>(::syscall(SYS_pidfd_open, item->id(), 0));
  ASSERT_GE(process, 0);
  int newest = -1;
  const auto folder = std::filesystem::path("/proc") / std::to_string(item->id()) / "fd";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string target = std::filesystem::read_symlink(entry.path());
    if (target.starts_with("socket:"))
      newest = std::max(newest, std::stoi(entry.path().filename()));
  }
  const int socket = static_cast<int>(::syscall(SYS_pidfd_getfd, process, newest, 0));
  ASSERT_GE(socket, 0) << std::strerror(errno);
  EXPECT_EQ(::shutdown(socket, SHUT_RDWR), 0);
  ::close(socket);
  ::close(process);
  panel->waitUntil([this] { return !isThere(1); });
  panel->open();
  panel->waitForItems(3);
  EXPECT_EQ(panel->property("Title", connection(2)), "Lumowatt title");
  EXPECT_TRUE(isThere(0));
}

TEST_F(CrowdedTiles, ThatTheBusDoesNotTakeAreNotShown) {
  start();
  panel->open();
  panel->settle();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_EQ(iconFiles(), Names{});
  item->send(SIGTERM);
  const ProcessResult result = item->wait();
  EXPECT_TRUE(result.errors.starts_with("lumowatt: cannot show the title beside the glyph: "))
      << result.errors;
  EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
  EXPECT_EQ(result.status, 0);
}

}  // namespace lumowatt
