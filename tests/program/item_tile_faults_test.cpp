// Tiles of the title that cannot be shown.

#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "program/title_fixture.h"

namespace lumowatt {

namespace {

/// Fixture for tiles that cannot be shown, at least temporarily.
class FailedTitleTiles : public TilesTest {};

/// Fixture with a bus that accepts two connections: the panel's and that of the glyph.
class TitleTilesOnFullBus : public TilesTest {
 protected:
  TitleTilesOnFullBus() : TilesTest("<limit name='max_connections_per_user'>2</limit>") {}
};

}  // namespace

TEST_F(FailedTitleTiles, AreOmittedWithoutARuntimeFolder) {
  variables = {{"XDG_RUNTIME_DIR", ""}};
  start();
  panel->open();
  chooseMode(menu_id::allFigures);
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), 1U);
  item->send(SIGTERM);
  const ProcessResult result = item->wait();
  EXPECT_EQ(result.errors,
            "lumowatt: cannot show the title beside the glyph: the session has no runtime "
            "folder\n")
      << "reported once, however often it is retried";
  EXPECT_EQ(result.status, 0);
}

TEST_F(FailedTitleTiles, AreUnregisteredWhenTheirIconsCannotBeReplaced) {
  startWithTile();
  // Replaces the folder of the icons, with the current icon, by a file.
  std::filesystem::remove_all(icons());
  user.write("runtime/lumowatt", "");
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitUntil([this] { return !isConnected(1); });
  std::filesystem::remove(icons());
  panel->open();
  panel->waitForItems(3);
  EXPECT_EQ(iconFiles(), Names{icon(2)});
  EXPECT_EQ(panel->property("Title", connection(2)), "Lumowatt title");
}

TEST_F(FailedTitleTiles, AreOmittedOnAFullDiskWithoutLeavingFiles) {
  item = startProcess(LUMOWATT_FAILING_SPACE);
  panel->waitForItem();
  panel->open();
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_EQ(iconFiles(), Names{});
}

TEST_F(FailedTitleTiles, AreRetriedEvenIfTheTextIsUnchanged) {
  user.write("runtime/lumowatt", "");
  start();
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), 1U);
  std::filesystem::remove(icons());
  panel->open();
  panel->waitForItems(2);
  EXPECT_EQ(iconFiles(), Names{icon(1)});
}

TEST_F(FailedTitleTiles, AreRegisteredAgainAfterALostConnection) {
  startWithTile();
  // The tile's connection is the newest socket of the process.
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
  panel->waitUntil([this] { return !isConnected(1); });
  panel->open();
  panel->waitForItems(3);
  EXPECT_EQ(panel->property("Title", connection(2)), "Lumowatt title");
  EXPECT_TRUE(isConnected(0));
}

TEST_F(TitleTilesOnFullBus, AreOmittedAndReportedOnce) {
  start();
  panel->open();
  panel->processLateMessages();
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
