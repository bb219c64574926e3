// "Open at login", where the session starts what is in the autostart folder and where nothing does.

#include <csignal>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

/// The user's manager, with the target that starts what is in the autostart folder.
class UserManager : public BusPeer {
 public:
  explicit UserManager(const SessionBus& session) : BusPeer(session) {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("ActiveState", "s", tellState, 0, 0),
        SD_BUS_VTABLE_END,
    };
    sd_bus_add_object_vtable(bus(), nullptr,
                             "/org/freedesktop/systemd1/unit/xdg_2ddesktop_2dautostart_2etarget",
                             "org.freedesktop.systemd1.Unit", table, this);
    own("org.freedesktop.systemd1");
  }

  const char* state = "inactive";
  int questions = 0;

  /// Answers a question, and returns when the bus has the answer.
  void waitForQuestion() {
    waitUntil([this] { return questions > 0; });
    questions = 0;
    isOwned("org.freedesktop.systemd1");
  }

 private:
  static int tellState(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                       void* object, sd_bus_error*) {
    auto& self = *static_cast<UserManager*>(object);
    ++self.questions;
    return sd_bus_message_append(reply, "s", self.state);
  }
};

class OpenAtLogin : public ItemTest {
 protected:
  OpenAtLogin() { install("canberra-gtk-play", "touch $traces/bell"); }

  void startIn(const std::string& desktop, const std::string& library = "") {
    variables = {{"XDG_CURRENT_DESKTOP", desktop}};
    item = startAnother(library);
    panel->waitForItem();
  }

  bool isChecked() const { return panel->menuProperty(menu_id::openAtLogin, "toggle-state") == 1; }
  void choose() const { ItemTest::choose(menu_id::openAtLogin, "Open at login"); }

  std::filesystem::path entry() const {
    return configuration() / "autostart/com.fernhollow.Lumowatt.desktop";
  }
  void writeEntry() const {
    user.write("config/autostart/com.fernhollow.Lumowatt.desktop", contents);
  }

  /// Chooses it by turns, which puts the entry there and takes it away.
  void expectThatItWorks() const {
    panel->open();
    EXPECT_FALSE(isChecked());
    choose();
    EXPECT_TRUE(isChecked());
    EXPECT_TRUE(std::filesystem::exists(entry()));
    choose();
    EXPECT_FALSE(isChecked());
    EXPECT_FALSE(std::filesystem::exists(entry()));
    EXPECT_FALSE(std::filesystem::exists(traces() / "bell"));
  }

  const std::string contents = "[Desktop Entry]\nType=Application\nExec=" LUMOWATT_PROGRAM "\n";
};

}  // namespace

TEST_F(OpenAtLogin, WhereNothingReadsTheFolderSoundsTheBellAndWritesNothing) {
  startIn("sway:wlroots");
  panel->open();
  choose();
  trace("bell");
  EXPECT_FALSE(isChecked());
  EXPECT_FALSE(std::filesystem::exists(entry()));
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot open at login: nothing in this session reads the autostart folder\n");
}

TEST_F(OpenAtLogin, WhereNothingReadsTheFolderLeavesAnEntryThereUnchecked) {
  writeEntry();
  startIn("sway");
  panel->waitUntil([this] { return panel->open(), !isChecked(); });
  choose();
  trace("bell");
  EXPECT_FALSE(isChecked());
  EXPECT_EQ(fileContents(entry()), contents);
}

TEST_F(OpenAtLogin, WhereTheManagersTargetIsActiveWorks) {
  UserManager manager(session);
  manager.state = "active";
  startIn("sway");
  panel->open();
  manager.waitForQuestion();
  expectThatItWorks();
}

TEST_F(OpenAtLogin, FollowsTheManagersTarget) {
  writeEntry();
  UserManager manager(session);
  startIn("sway");
  panel->open();
  for (const auto& [state, checked] :
       {std::pair{"inactive", false}, std::pair{"active", true}, std::pair{"inactive", false}}) {
    manager.state = state;
    manager.waitForQuestion();
    panel->open();
    EXPECT_EQ(isChecked(), checked) << state;
  }
}

TEST_F(OpenAtLogin, WhereAProgramMayReadTheFolderWorksWithoutTheManager) {
  UserManager manager(session);
  install("dex", "");
  startIn("i3", LUMOWATT_HURRYING_CLOCK);
  expectThatItWorks();
  manager.settle();
  EXPECT_EQ(manager.questions, 0);
}

TEST_F(OpenAtLogin, OnADesktopOrWithoutOneWorksWithoutTheManager) {
  UserManager manager(session);
  for (const char* const desktop : {"ubuntu:GNOME", ""}) {
    startIn(desktop, LUMOWATT_HURRYING_CLOCK);
    expectThatItWorks();
    manager.settle();
    EXPECT_EQ(manager.questions, 0) << desktop;
    stop();
  }
}

}  // namespace lumowatt
