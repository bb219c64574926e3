// The program as it is installed, in each place where that may be.

#include <sys/stat.h>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

struct Place {
  const char* name;
  const char* prefix;  // below a root of the test's own
  const char* moved;   // where to the whole goes afterwards, if anywhere
  const char* link;    // a link that leads to the program, if any
  // Where another distribution has the modules, below the prefix, and the program built for that.
  const char* modules = nullptr;
  const char* built = nullptr;
};

std::ostream& operator<<(std::ostream& out, const Place& place) { return out << place.name; }

/// Installs the build, for a prefix and with further variables of the environment.
void installBuild(const std::string& prefix, const Environment& environment = {}) {
  const auto result =
      runProcess({"cmake", "--install", LUMOWATT_BUILD, "--prefix", prefix, "--component",
                  "Unspecified"},  // whose manifest nobody else writes
                 environment);
  EXPECT_EQ(result.status, 0) << result.errors;
}

/// The paths below a folder, files and folders, that not everybody can read and enter.
std::vector<std::string> privatePaths(const std::filesystem::path& folder) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const auto wanted = std::filesystem::perms(entry.is_directory() ? 0755 : 0644);
    if ((entry.status().permissions() & wanted) != wanted) {
      paths.push_back(entry.path().lexically_relative(folder));
    }
  }
  return paths;
}

/// A folder with a name that needs to be quoted.
struct OddPlace {
  const char* name;
  const char* prefix;   // below a root of the test's own
  const char* command;  // the program as the unit has it, with "@" in the place of the root
};

class UserUnit : public testing::TestWithParam<OddPlace> {};

class Installation : public ItemTest, public testing::WithParamInterface<Place> {
 protected:
  Installation() {
    const Place& place = GetParam();
    std::filesystem::path whole = root_.path() / place.prefix;
    installBuild(whole);
    if (place.modules != nullptr) {
      const std::filesystem::path modules = whole / place.modules;
      std::filesystem::create_directories(modules.parent_path());
      std::filesystem::rename(whole / LUMOWATT_MODULE_FOLDER, modules);
      std::filesystem::copy_file(std::filesystem::path(LUMOWATT_PROGRAMS) / place.built,
                                 whole / "bin/lumowatt",
                                 std::filesystem::copy_options::overwrite_existing);
    }
    if (place.moved != nullptr) {
      const std::filesystem::path moved = root_.path() / place.moved;
      std::filesystem::create_directories(moved.parent_path());
      std::filesystem::rename(whole, moved);
      whole = moved;
    }
    installed_ = whole / "bin/lumowatt";
    program = installed_;
    if (place.link != nullptr) {
      program = root_.path() / place.link;
      std::filesystem::create_directories(std::filesystem::path(program).parent_path());
      std::filesystem::create_symlink(installed_, program);
    }
  }

  ProcessResult run(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command{program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProcess(command, machine.environment());
  }

  std::string installed() const { return installed_; }

 private:
  TemporaryFolder root_;
  std::filesystem::path installed_;
};

}  // namespace

TEST_P(Installation, TellsItsVersion) {
  expectResult(run({"--version"}), LUMOWATT_VERSION "\n", 0);
}

TEST_P(Installation, ReadsTheBattery) {
  const auto result = run({"--dump"});
  EXPECT_TRUE(result.output.starts_with("percent=98\ntrend=down\n")) << result.output;
  EXPECT_EQ(result.status, 0);
}

TEST_P(Installation, DrawsAPicture) {
  const std::string path = user.path() / "out.png";
  expectResult(run({"--snapshot", path, "--sample", "low"}), "wrote " + path + "\n", 0);
  EXPECT_TRUE(fileContents(path).starts_with("\x89PNG"));
}

TEST_P(Installation, ShowsTheItemWithIconsThatAreThere) {
  start();
  const std::filesystem::path icons = panel->property("IconThemePath").get<std::string>();
  const std::string icon = panel->property("IconName").get<std::string>();
  EXPECT_TRUE(std::filesystem::exists(icons / (icon + ".svg"))) << icons << " " << icon;
  const auto theme = icons.parent_path().parent_path() / "icons/hicolor/scalable/status";
  EXPECT_TRUE(std::filesystem::exists(theme / (icon + ".svg"))) << theme;
}

TEST_P(Installation, OpensTheProgramItselfAtLogin) {
  start();
  panel->open();
  choose(menu_id::openAtLogin, "Open at login");
  const std::string entry =
      fileContents(configuration() / "autostart/com.fernhollow.Lumowatt.desktop");
  EXPECT_NE(entry.find("\nExec=\"" + installed() + "\"\n"), std::string::npos) << entry;
}

INSTANTIATE_TEST_SUITE_P(
    , Installation,
    testing::Values(Place{"System", "usr", nullptr, nullptr},
                    Place{"Local", "usr/local", nullptr, nullptr},
                    Place{"Moved", "old", "home/somebody/lumowatt 1.0", nullptr},
                    Place{"Linked", "opt/lumowatt", nullptr, "home/somebody/bin/lumowatt"},
                    Place{"Lib64", "usr", nullptr, nullptr, "lib64/lumowatt", "lumowatt-lib64"},
                    Place{"Multiarch", "usr", nullptr, nullptr, "lib/x86_64-linux-gnu/lumowatt",
                          "lumowatt-multiarch"},
                    Place{"LibexecMoved", "usr", "opt/lumowatt", nullptr, "libexec/lumowatt",
                          "lumowatt-libexec"}),
    [](const auto& test) { return test.param.name; });

/// Installs with the umask of somebody whose files are private.
class PrivateInstallation : public testing::Test {
 protected:
  PrivateInstallation() : umask_(umask(077)) {}
  ~PrivateInstallation() override { umask(umask_); }

  std::filesystem::path root() const { return root_.path(); }

 private:
  TemporaryFolder root_;
  mode_t umask_;
};

TEST_F(PrivateInstallation, IsForEverybodyAllTheSame) {
  installBuild("/usr", {{"DESTDIR", root()}});
  EXPECT_TRUE(std::filesystem::exists(root() / "usr/bin/lumowatt"));
  EXPECT_EQ(privatePaths(root()), std::vector<std::string>());
}

TEST_F(PrivateInstallation, LeavesFoldersAsTheyWere) {
  const std::filesystem::path folders[] = {
      "share/applications", "share/icons/hicolor/scalable/status", LUMOWATT_UNIT_FOLDER};
  for (const auto& folder : folders) {
    std::filesystem::create_directories(root() / folder);
  }
  installBuild(root());
  for (const auto& folder : folders) {
    const auto permissions = std::filesystem::status(root() / folder).permissions();
    EXPECT_EQ(permissions, std::filesystem::perms::owner_all) << folder;
  }
}

TEST_P(UserUnit, StartsTheProgramThatWasInstalled) {
  const auto& [name, prefix, command] = GetParam();
  const TemporaryFolder root;
  const std::filesystem::path whole = root.path() / prefix;
  installBuild(whole);
  const std::filesystem::path unit = whole / LUMOWATT_UNIT_FOLDER "/lumowatt.service";
  std::string line = std::string("\nExecStart=") + command + "\n";
  line.replace(line.find('@'), 1, root.path());
  EXPECT_NE(fileContents(unit).find(line), std::string::npos) << fileContents(unit);
  const auto result =
      runProcess({"systemd-analyze", "--user", "verify", "--man=no", unit},
                 {{"HOME", root.path()}, {"XDG_RUNTIME_DIR", root.path()}, {"XDG_DATA_HOME", ""}});
  expectResult(result, "", 0);
}

INSTANTIATE_TEST_SUITE_P(
    , UserUnit,
    testing::Values(OddPlace{"System", "usr", R"("@/usr/bin/lumowatt")"},
                    OddPlace{"Space", "my programs", R"("@/my programs/bin/lumowatt")"},
                    OddPlace{"Percent", "100%h", R"("@/100%%h/bin/lumowatt")"},
                    OddPlace{"Dollar", "a $b ${c}", R"("@/a $b ${c}/bin/lumowatt")"},
                    OddPlace{"Quotes", R"(o'brien "x" %h $b)",
                             R"(/usr/bin/env "@/o'brien \"x\" %%h $$b/bin/lumowatt")"}),
    [](const auto& test) { return test.param.name; });

TEST(UserUnitOf, ARelativePrefixHasTheAbsolutePath) {
  const TemporaryFolder root;
  installBuild(std::filesystem::relative(root.path() / "usr"));
  const std::string unit =
      fileContents(root.path() / "usr" / LUMOWATT_UNIT_FOLDER "/lumowatt.service");
  const std::string program = root.path() / "usr/bin/lumowatt";
  EXPECT_NE(unit.find("\nExecStart=\"" + program + "\"\n"), std::string::npos) << unit;
}

TEST(UserUnitOf, APackageIsWithoutTheFolderInWhichThatIsMade) {
  const TemporaryFolder root;
  installBuild("/usr", {{"DESTDIR", root.path()}});
  const std::string unit =
      fileContents(root.path() / "usr" / LUMOWATT_UNIT_FOLDER "/lumowatt.service");
  EXPECT_NE(unit.find("\nExecStart=\"/usr/bin/lumowatt\"\n"), std::string::npos) << unit;
}

}  // namespace lumowatt
