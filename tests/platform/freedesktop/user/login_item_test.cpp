#include "platform/freedesktop/user/login_item.h"

#include <gtest/gtest.h>

#include "support/environment.h"
#include "support/files.h"

namespace lumowatt::freedesktop {

namespace {

class LoginItemTest : public testing::Test {
 protected:
  LoginItemTest() {
    addProgram("bin/lumowatt");
    addProgram(R"(with \space/lumo"watt )");
  }

  void addProgram(const std::string& name) const {
    folder.write(name, "#!/bin/sh\n");
    std::filesystem::permissions(folder.path() / name, std::filesystem::perms(0755));
  }

  std::string entry() const { return folder.path() / "autostart" / "lumowatt.desktop"; }
  std::string program() const { return folder.path() / "bin" / "lumowatt"; }

  /// Returns the status of an entry with these lines.
  LoginItemStatus statusOf(const std::string& lines) const {
    folder.write("autostart/lumowatt.desktop", "[Desktop Entry]\n" + lines);
    return item().status();
  }

  LoginItem item() const { return {entry(), program()}; }

  TemporaryFolder folder;
};

}  // namespace

TEST_F(LoginItemTest, IsNotRegisteredWithoutAnEntry) {
  EXPECT_EQ(item().status(), LoginItemStatus::notRegistered);
}

TEST_F(LoginItemTest, IsEnabledAfterAddAndNotRegisteredAfterRemove) {
  EXPECT_TRUE(item().add());
  EXPECT_EQ(item().status(), LoginItemStatus::enabled);
  EXPECT_EQ(fileContents(entry()),
            "[Desktop Entry]\nType=Application\nName=Lumowatt\n"
            "Comment=Battery item for the panel\nTryExec=" +
                program() + "\nExec=\"" + program() + "\"\nTerminal=false\n");
  EXPECT_TRUE(item().remove());
  EXPECT_EQ(item().status(), LoginItemStatus::notRegistered);
  EXPECT_FALSE(std::filesystem::exists(entry()));
  EXPECT_TRUE(item().remove()) << "a missing entry is not a failure";
}

TEST_F(LoginItemTest, SupportsSpecialCharactersInTheProgramPath) {
  const LoginItem special(entry(), folder.path() / R"(with \space/lumo"watt )");
  EXPECT_TRUE(special.add());
  EXPECT_EQ(special.status(), LoginItemStatus::enabled);
}

TEST_F(LoginItemTest, RequiresApprovalIfHiddenOrDisabled) {
  const std::string exec = "Exec=" + program() + "\n";
  EXPECT_EQ(statusOf(exec), LoginItemStatus::enabled);
  EXPECT_EQ(statusOf(exec + "Hidden=true\n"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusOf(exec + "Hidden=false\n"), LoginItemStatus::enabled);
  EXPECT_EQ(statusOf(exec + "X-GNOME-Autostart-enabled=false\n"),
            LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusOf(exec + "X-MATE-Autostart-enabled=false\n"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusOf("Hidden=true\n"), LoginItemStatus::requiresApproval);
}

TEST_F(LoginItemTest, ReplacesAHiddenEntryOnAdd) {
  ASSERT_EQ(statusOf("Exec=x\nHidden=true\n"), LoginItemStatus::requiresApproval);
  EXPECT_TRUE(item().add());
  EXPECT_EQ(item().status(), LoginItemStatus::enabled);
}

TEST_F(LoginItemTest, IsNotFoundIfItsProgramIsMissing) {
  EXPECT_EQ(statusOf("Exec=/nowhere/lumowatt\n"), LoginItemStatus::notFound);
  EXPECT_EQ(statusOf("Exec=\n"), LoginItemStatus::notFound);
  EXPECT_EQ(statusOf("Name=no program\n"), LoginItemStatus::notFound);
  EXPECT_EQ(statusOf("Exec=" + folder.path().string() + "\n"), LoginItemStatus::notFound);
}

TEST_F(LoginItemTest, IsNotFoundIfTheTryExecProgramIsMissing) {
  const std::string exec = "Exec=" + program() + "\n";
  EXPECT_EQ(statusOf(exec + "TryExec=/nowhere/lumowatt\n"), LoginItemStatus::notFound);
  EXPECT_EQ(statusOf(exec + "TryExec=" + program() + "\n"), LoginItemStatus::enabled);
  EXPECT_EQ(statusOf(exec + "TryExec=\n"), LoginItemStatus::enabled)
      << "an empty TryExec is ignored";
  EXPECT_EQ(statusOf("Exec=/nowhere/lumowatt\nTryExec=" + program() + "\n"),
            LoginItemStatus::notFound);
}

TEST_F(LoginItemTest, RequiresApprovalIfRestrictedToOtherDesktops) {
  const std::string exec = "Exec=" + program() + "\n";
  const ScopedVariable desktop("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
  EXPECT_EQ(statusOf(exec + "OnlyShowIn=XFCE;GNOME;\n"), LoginItemStatus::enabled);
  EXPECT_EQ(statusOf(exec + "OnlyShowIn=GNOME\n"), LoginItemStatus::enabled);
  EXPECT_EQ(statusOf(exec + "OnlyShowIn=XFCE;GNO;\n"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusOf(exec + "OnlyShowIn=\n"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusOf(exec + "NotShowIn=XFCE;\n"), LoginItemStatus::enabled);
  EXPECT_EQ(statusOf(exec + "NotShowIn=XFCE;GNOME;\n"), LoginItemStatus::requiresApproval);
  EXPECT_EQ(statusOf("Exec=/nowhere/lumowatt\nOnlyShowIn=XFCE;\n"),
            LoginItemStatus::requiresApproval);
}

TEST_F(LoginItemTest, UsesTheFirstDesktopNameThatIsInEitherList) {
  const std::string exec = "Exec=" + program() + "\n";
  const std::string lists = "OnlyShowIn=GNOME;\nNotShowIn=ubuntu;\n";
  const ScopedVariable notFirst("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
  EXPECT_EQ(statusOf(exec + lists), LoginItemStatus::requiresApproval);
  const ScopedVariable onlyFirst("XDG_CURRENT_DESKTOP", "GNOME:ubuntu");
  EXPECT_EQ(statusOf(exec + lists), LoginItemStatus::enabled);
}

TEST_F(LoginItemTest, IgnoresDesktopListsIfTheDesktopHasNoName) {
  const ScopedVariable desktop("XDG_CURRENT_DESKTOP", std::nullopt);
  EXPECT_EQ(statusOf("Exec=" + program() + "\nOnlyShowIn=XFCE;\n"), LoginItemStatus::enabled);
}

TEST_F(LoginItemTest, FindsItsProgramInThePath) {
  const ScopedVariable path("PATH", (folder.path() / "bin").string());
  EXPECT_EQ(statusOf("Exec=lumowatt --x\n"), LoginItemStatus::enabled);
  EXPECT_EQ(statusOf("Exec=other\n"), LoginItemStatus::notFound);
}

TEST_F(LoginItemTest, CannotBeAddedIfItsProgramIsMissing) {
  EXPECT_FALSE(LoginItem(entry(), "/nowhere/lumowatt").add());
  EXPECT_FALSE(std::filesystem::exists(entry()));
}

TEST_F(LoginItemTest, CannotBeChangedIfItsPathIsAFolder) {
  std::filesystem::create_directories(entry());
  EXPECT_EQ(item().status(), LoginItemStatus::notRegistered);
  EXPECT_FALSE(item().add());
  EXPECT_FALSE(item().remove());
}

}  // namespace lumowatt::freedesktop
