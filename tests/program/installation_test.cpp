// Tests the installed program, its user unit and its file permissions, in different folders.

#include <sys/stat.h>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

/// Layout of an installation. The prefixes and the link are relative to the test's temporary
/// folder.
struct Layout {
  const char* name;
  const char* prefix;
  const char* newPrefix;  // prefix to which the installation is moved; null if it is not moved
  const char* link;       // symbolic link to the program; null if there is none
  // Folder of the modules, relative to the prefix, and name of the executable that is built for
  // this folder. Both are null for the configured folder.
  const char* moduleFolder = nullptr;
  const char* executable = nullptr;
};

std::ostream& operator<<(std::ostream& out, const Layout& layout) { return out << layout.name; }

/// Installs the build below `prefix`, with additional environment variables.
void installBuild(const std::string& prefix, const Environment& environment = {}) {
  const auto result =
      runProcess({"cmake", "--install", LUMOWATT_BUILD, "--prefix", prefix, "--component",
                  "Unspecified"},  // this component's manifest file is used only here
                 environment);
  EXPECT_EQ(result.status, 0) << result.errors;
}

/// Returns the files that not every user can read, and the folders that not every user can enter.
std::vector<std::string> privatePaths(const std::filesystem::path& folder) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const auto required = std::filesystem::perms(entry.is_directory() ? 0755 : 0644);
    if ((entry.status().permissions() & required) != required) {
      paths.push_back(entry.path().lexically_relative(folder));
    }
  }
  return paths;
}

/// Prefix of an installation, and its quoted form in the systemd unit.
struct QuotedPrefix {
  const char* name;
  const char* prefix;   // relative to the test's temporary folder
  const char* command;  // command in the unit; "@" stands for the temporary folder
};

class UserUnit : public testing::TestWithParam<QuotedPrefix> {};

class InstalledProgram : public ItemTest, public testing::WithParamInterface<Layout> {
 protected:
  InstalledProgram() {
    const Layout& layout = GetParam();
    std::filesystem::path installation = root_.path() / layout.prefix;
    installBuild(installation);
    if (layout.moduleFolder != nullptr) {
      const std::filesystem::path modules = installation / layout.moduleFolder;
      std::filesystem::create_directories(modules.parent_path());
      std::filesystem::rename(installation / LUMOWATT_MODULE_FOLDER, modules);
      std::filesystem::copy_file(std::filesystem::path(LUMOWATT_PROGRAMS) / layout.executable,
                                 installation / "bin/lumowatt",
                                 std::filesystem::copy_options::overwrite_existing);
    }
    if (layout.newPrefix != nullptr) {
      const std::filesystem::path moved = root_.path() / layout.newPrefix;
      std::filesystem::create_directories(moved.parent_path());
      std::filesystem::rename(installation, moved);
      installation = moved;
    }
    executable_ = installation / "bin/lumowatt";
    program = executable_;
    if (layout.link != nullptr) {
      program = root_.path() / layout.link;
      std::filesystem::create_directories(std::filesystem::path(program).parent_path());
      std::filesystem::create_symlink(executable_, program);
    }
  }

  ProcessResult run(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command{program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProcess(command, machine.environment());
  }

  std::string executable() const { return executable_; }

 private:
  TemporaryFolder root_;
  std::filesystem::path executable_;
};

}  // namespace

TEST_P(InstalledProgram, PrintsItsVersion) {
  expectResult(run({"--version"}), LUMOWATT_VERSION "\n", 0);
}

TEST_P(InstalledProgram, DumpsTheBattery) {
  const auto result = run({"--dump"});
  EXPECT_TRUE(result.output.starts_with("percent=98\ntrend=down\n")) << result.output;
  EXPECT_EQ(result.status, 0);
}

TEST_P(InstalledProgram, WritesASnapshot) {
  const std::string path = user.path() / "out.png";
  expectResult(run({"--snapshot", path, "--sample", "low"}), "wrote " + path + "\n", 0);
  EXPECT_TRUE(fileContents(path).starts_with("\x89PNG"));
}

TEST_P(InstalledProgram, ShowsTheItemWithInstalledIcons) {
  start();
  const std::filesystem::path icons = panel->property("IconThemePath").get<std::string>();
  const std::string icon = panel->property("IconName").get<std::string>();
  EXPECT_TRUE(std::filesystem::exists(icons / (icon + ".svg"))) << icons << " " << icon;
  const auto theme = icons.parent_path().parent_path() / "icons/hicolor/scalable/status";
  EXPECT_TRUE(std::filesystem::exists(theme / (icon + ".svg"))) << theme;
}

TEST_P(InstalledProgram, RegistersTheInstalledExecutableToOpenAtLogin) {
  start();
  panel->open();
  choose(menu_id::openAtLogin, "Open at login");
  const std::string entry =
      fileContents(configuration() / "autostart/com.fernhollow.Lumowatt.desktop");
  EXPECT_NE(entry.find("\nExec=\"" + executable() + "\"\n"), std::string::npos) << entry;
}

INSTANTIATE_TEST_SUITE_P(
    , InstalledProgram,
    testing::Values(Layout{"System", "usr", nullptr, nullptr},
                    Layout{"Local", "usr/local", nullptr, nullptr},
                    Layout{"Moved", "old", "home/somebody/lumowatt 1.0", nullptr},
                    Layout{"Linked", "opt/lumowatt", nullptr, "home/somebody/bin/lumowatt"},
                    Layout{"Lib64", "usr", nullptr, nullptr, "lib64/lumowatt", "lumowatt-lib64"},
                    Layout{"Multiarch", "usr", nullptr, nullptr, "lib/x86_64-linux-gnu/lumowatt",
                           "lumowatt-multiarch"},
                    Layout{"LibexecMoved", "usr", "opt/lumowatt", nullptr, "libexec/lumowatt",
                           "lumowatt-libexec"}),
    [](const auto& test) { return test.param.name; });

/// Fixture with a umask that makes new files private to their owner.
class InstallationWithPrivateUmask : public testing::Test {
 protected:
  InstallationWithPrivateUmask() : umask_(umask(077)) {}
  ~InstallationWithPrivateUmask() override { umask(umask_); }

  std::filesystem::path root() const { return root_.path(); }

 private:
  TemporaryFolder root_;
  mode_t umask_;
};

TEST_F(InstallationWithPrivateUmask, IsReadableByEveryUser) {
  installBuild("/usr", {{"DESTDIR", root()}});
  EXPECT_TRUE(std::filesystem::exists(root() / "usr/bin/lumowatt"));
  EXPECT_EQ(privatePaths(root()), std::vector<std::string>());
}

TEST_F(InstallationWithPrivateUmask, PreservesExistingFoldersPermissions) {
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

TEST_P(UserUnit, StartsTheInstalledProgram) {
  const auto& [name, prefix, command] = GetParam();
  const TemporaryFolder root;
  const std::filesystem::path installation = root.path() / prefix;
  installBuild(installation);
  const std::filesystem::path unit = installation / LUMOWATT_UNIT_FOLDER "/lumowatt.service";
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
    testing::Values(QuotedPrefix{"System", "usr", R"("@/usr/bin/lumowatt")"},
                    QuotedPrefix{"Space", "my programs", R"("@/my programs/bin/lumowatt")"},
                    QuotedPrefix{"Percent", "100%h", R"("@/100%%h/bin/lumowatt")"},
                    QuotedPrefix{"Dollar", "a $b ${c}", R"("@/a $b ${c}/bin/lumowatt")"},
                    QuotedPrefix{"Quotes", R"(o'brien "x" %h $b)",
                                 R"(/usr/bin/env "@/o'brien \"x\" %%h $$b/bin/lumowatt")"}),
    [](const auto& test) { return test.param.name; });

TEST(UserUnitPath, IsAbsoluteForARelativePrefix) {
  const TemporaryFolder root;
  installBuild(std::filesystem::relative(root.path() / "usr"));
  const std::string unit =
      fileContents(root.path() / "usr" / LUMOWATT_UNIT_FOLDER "/lumowatt.service");
  const std::string program = root.path() / "usr/bin/lumowatt";
  EXPECT_NE(unit.find("\nExecStart=\"" + program + "\"\n"), std::string::npos) << unit;
}

TEST(UserUnitPath, OmitsTheStagingFolderOfAPackage) {
  const TemporaryFolder root;
  installBuild("/usr", {{"DESTDIR", root.path()}});
  const std::string unit =
      fileContents(root.path() / "usr" / LUMOWATT_UNIT_FOLDER "/lumowatt.service");
  EXPECT_NE(unit.find("\nExecStart=\"/usr/bin/lumowatt\"\n"), std::string::npos) << unit;
}

}  // namespace lumowatt
