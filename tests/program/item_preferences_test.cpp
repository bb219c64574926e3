#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

constexpr auto readOnlyFolder =
    std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec;

/// Changes the permissions of a file or folder, and restores them on destruction.
class ScopedPermissions {
 public:
  ScopedPermissions(std::filesystem::path path, std::filesystem::perms permissions)
      : path_(std::move(path)), before_(std::filesystem::status(path_).permissions()) {
    std::filesystem::permissions(path_, permissions);
  }
  ScopedPermissions(const ScopedPermissions&) = delete;
  ScopedPermissions& operator=(const ScopedPermissions&) = delete;
  ~ScopedPermissions() { std::filesystem::permissions(path_, before_); }

 private:
  std::filesystem::path path_;
  std::filesystem::perms before_;
};

/// Fixture for the preferences of the running item.
class Preferences : public ItemTest {
 protected:
  void write(const std::string& contents) const {
    user.write("config/lumowatt/preferences", contents);
  }

  /// State of the menu: the index of the checked mode, and the two toggles.
  struct Effect {
    int mode;
    bool colors;
    bool animation;
    friend bool operator==(const Effect&, const Effect&) = default;
  };
  Effect effect() const {
    panel->open();
    int mode = -1;
    for (int i = 0; i < 4; ++i) {
      if (panel->menuProperty(menu_id::percent + i, "toggle-state") == 1) mode = i;
    }
    return {mode, panel->menuProperty(menu_id::colors, "toggle-state") == 1,
            panel->menuProperty(menu_id::animation, "toggle-state") == 1};
  }

  static constexpr Effect defaults{1, true, true};

  /// Starts the item without the capabilities to bypass file permissions that root has.
  void startWithoutPrivileges() {
    if (::geteuid() == 0) {
      prefix = {"/usr/bin/setpriv", "--bounding-set=-dac_override,-dac_read_search"};
    }
    start();
    panel->open();
  }
};

}  // namespace

TEST_F(Preferences, UseDefaultsAndWriteNothingIfTheFileIsMissing) {
  start();
  EXPECT_EQ(effect(), defaults);
  EXPECT_FALSE(std::filesystem::exists(configuration() / "lumowatt"));
}

TEST_F(Preferences, UseDefaultsIfTheFileIsEmpty) {
  write("");
  start();
  EXPECT_EQ(effect(), defaults);
  EXPECT_EQ(fileContents(preferences()), "");
}

TEST_F(Preferences, AreReadFromTheFile) {
  write("mode=3\ncolor=false\nanimate=false\n");
  start();
  EXPECT_EQ(effect(), (Effect{3, false, false}));
}

TEST_F(Preferences, AreReadAgainWhenTheMenuOpens) {
  start();
  EXPECT_EQ(effect(), defaults);
  write("mode=2\nanimate=false\n");
  EXPECT_EQ(effect(), (Effect{2, true, false}));
}

TEST_F(Preferences, UseTheDefaultModeAndPreserveAModeOutOfRange) {
  for (const char* const mode : {"4", "99", "-1", "99999999999999999999"}) {
    const std::string file = std::string("mode=") + mode + "\n";
    write(file);
    if (!item) start();
    EXPECT_EQ(effect(), defaults) << mode;
    EXPECT_EQ(fileContents(preferences()), file);
  }
}

TEST_F(Preferences, ShowOnlyThePercentageIfTheModeIsNotANumber) {
  write("mode=banana\ncolor=maybe\n");
  start();
  EXPECT_EQ(effect(), (Effect{0, false, true}));
  EXPECT_EQ(panel->property("XAyatanaLabel"), "98% ▼");
}

TEST_F(Preferences, PreserveUnknownLines) {
  write("# mine\nmode=banana\n\nsomething=else\nno sign\ncolor=false");
  start();
  panel->open();
  choose(menu_id::colors, "Colors");
  choose(menu_id::animation, "Charging animation");
  EXPECT_EQ(panel->click(menu_id::allFigures), "");
  EXPECT_EQ(fileContents(preferences()),
            "# mine\nmode=3\n\nsomething=else\nno sign\ncolor=true\nanimate=false\n");
  EXPECT_EQ(effect(), (Effect{3, true, false}));
}

TEST_F(Preferences, UseDefaultsAndPreserveAFolderAtTheirPath) {
  std::filesystem::create_directories(preferences() / "inside");
  install("canberra-gtk-play", "touch $traces/bell");
  start();
  EXPECT_EQ(effect(), defaults);
  choose(menu_id::colors, "Colors");
  waitForTrace("bell");
  EXPECT_EQ(effect(), defaults);
  EXPECT_TRUE(std::filesystem::is_directory(preferences() / "inside"));
}

TEST_F(Preferences, UseDefaultsWithoutBlockingIfTheFileIsAPipe) {
  std::filesystem::create_directories(configuration() / "lumowatt");
  ASSERT_EQ(::mkfifo(preferences().c_str(), 0600), 0);
  start();
  EXPECT_EQ(effect(), defaults);
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(effect(), defaults);
}

TEST_F(Preferences, UseDefaultsAndPreserveAnUnreadableFile) {
  write("mode=3\nmine=1\n");
  const ScopedPermissions none(preferences(), std::filesystem::perms::none);
  startWithoutPrivileges();
  EXPECT_EQ(effect(), defaults);
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(effect(), defaults);
  std::filesystem::permissions(preferences(), std::filesystem::perms::owner_read);
  EXPECT_EQ(fileContents(preferences()), "mode=3\nmine=1\n");
}

TEST_F(Preferences, AreUnchangedInAReadOnlyFolder) {
  write("mode=3\nmine=1\n");
  const ScopedPermissions folder(preferences().parent_path(), readOnlyFolder);
  startWithoutPrivileges();
  EXPECT_EQ(effect(), (Effect{3, true, true}));
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(effect(), (Effect{3, true, true}));
  EXPECT_EQ(fileContents(preferences()), "mode=3\nmine=1\n");
}

TEST_F(Preferences, UseDefaultsIfTheirFolderCannotBeCreated) {
  std::filesystem::create_directories(configuration());
  const ScopedPermissions folder(configuration(), readOnlyFolder);
  startWithoutPrivileges();
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(effect(), defaults);
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors, "lumowatt: cannot store the preference: Permission denied\n");
}

TEST_F(Preferences, UseDefaultsWithoutAHomeFolder) {
  variables = {{"XDG_CONFIG_HOME", ""}, {"HOME", ""}};
  start();
  EXPECT_EQ(effect(), defaults);
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(effect(), defaults);
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot store the preference: neither XDG_CONFIG_HOME nor HOME is set\n");
}

TEST_F(Preferences, AreUnchangedAtTheFileSizeLimit) {
  write("mode=3\nmine=1\n");
  prefix = {"/bin/bash", "-c", "ulimit -f 0; exec \"$0\""};  // no file can grow
  start();
  EXPECT_EQ(effect(), (Effect{3, true, true}));
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(effect(), (Effect{3, true, true}));
  EXPECT_EQ(fileContents(preferences()), "mode=3\nmine=1\n");
  const std::filesystem::directory_iterator files(preferences().parent_path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "no other file is left";
  EXPECT_TRUE(item->isRunning());
}

TEST_F(Preferences, AreUnchangedAndTheBellRingsIfTheDiskIsFull) {
  write("mode=3\nmine=1\n");
  install("canberra-gtk-play", "touch $traces/bell");
  item = startProcess(LUMOWATT_FAILING_SPACE);
  panel->waitForItem();
  panel->open();
  choose(menu_id::colors, "Colors");
  waitForTrace("bell");
  EXPECT_EQ(effect(), (Effect{3, true, true}));
  EXPECT_EQ(fileContents(preferences()), "mode=3\nmine=1\n");
  const std::filesystem::directory_iterator files(preferences().parent_path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "no other file is left";
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot store the preference: No space left on device\n");
}

}  // namespace lumowatt
