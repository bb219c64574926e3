#include <csignal>

#include "program/item_fixture.h"

namespace lumowatt {

namespace {

/// Fixture for the start and the end of the program in its session.
class ItemProcess : public ItemTest {};

/// Fixture with a bus that allows two match rules per connection.
class ItemLimitedToTwoMatchRules : public ItemTest {
 protected:
  ItemLimitedToTwoMatchRules()
      : ItemTest("<limit name='max_match_rules_per_connection'>2</limit>") {}
};

}  // namespace

TEST_F(ItemProcess, ExitsIfTheSessionAlreadyHasAnItem) {
  start();
  const ProcessResult second = startProcess()->wait();
  expectResult(second, "", 0);
  EXPECT_TRUE(item->isRunning());
  EXPECT_EQ(panel->registered.size(), 1U);
}

TEST_F(ItemProcess, RegistersAfterAnEarlierProcessWasKilled) {
  start();
  stop();
  start();
  EXPECT_EQ(panel->property("Id"), "Lumowatt");
}

TEST_F(ItemProcess, ExitsCleanlyOnTerminationSignals) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    start();
    item->send(signal);
    expectResult(item->wait(), "", 0);
    stop();
  }
}

TEST_F(ItemProcess, ExitsWithAnErrorWhenTheBusDisconnects) {
  start();
  session.kill();
  expectResult(item->wait(), "error=session bus lost\n", 1);
}

TEST_F(ItemProcess, ExitsWithAnErrorIfTheBusIsUnreachable) {
  session.kill();
  const ProcessResult result = startProcess()->wait();
  EXPECT_EQ(result.output, "error=no session bus\n");
  EXPECT_EQ(result.errors, "lumowatt: cannot connect to the session bus: Connection refused\n");
  EXPECT_EQ(result.status, 1);
}

TEST_F(ItemProcess, ExitsWithAnErrorIfTheBusAddressIsUnknown) {
  variables = {{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", ""}};
  const ProcessResult result = startProcess()->wait();
  EXPECT_EQ(result.output, "error=no session bus\n");
  EXPECT_EQ(result.status, 1);
}

TEST_F(ItemProcess, ExitsWithAnErrorWithoutTheDesktopModule) {
  const TemporaryFolder folder;
  std::filesystem::copy(LUMOWATT_PROGRAM, folder.path() / "lumowatt");
  const ProcessResult result = runProcess({folder.path() / "lumowatt"}, machine.environment());
  EXPECT_EQ(result.output, "error=no desktop\n");
  EXPECT_NE(result.errors.find("lumowatt-desktop.so: cannot open shared object file"),
            std::string::npos)
      << result.errors;
  EXPECT_EQ(result.status, 1);
}

TEST_F(ItemLimitedToTwoMatchRules, IsRegisteredAndReportsTheError) {
  start();
  EXPECT_EQ(panel->property("Id"), "Lumowatt");
  item->send(SIGTERM);
  const ProcessResult result = item->wait();
  EXPECT_NE(result.errors.find("lumowatt: cannot subscribe to signals of the session bus: "),
            std::string::npos)
      << result.errors;
  EXPECT_EQ(result.status, 0);
}

}  // namespace lumowatt
