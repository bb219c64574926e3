#include <csignal>

#include "program/item_fixture.h"

namespace lumowatt {

namespace {

/// The item's life in its session.
class Session : public ItemTest {};

/// A session whose bus tells nobody of signals by more than two rules.
class CrampedSession : public ItemTest {
 protected:
  CrampedSession() : ItemTest("<limit name='max_match_rules_per_connection'>2</limit>") {}
};

}  // namespace

TEST_F(Session, HasOneItem) {
  start();
  const ProcessResult second = startAnother()->wait();
  expectResult(second, "", 0);
  EXPECT_TRUE(item->isRunning());
  EXPECT_EQ(panel->registered.size(), 1U);
}

TEST_F(Session, HasAnotherItemWhenTheFirstIsGone) {
  start();
  stop();
  start();
  EXPECT_EQ(panel->property("Id"), "Lumowatt");
}

TEST_F(Session, EndsTheItemWellBySignals) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    start();
    item->send(signal);
    expectResult(item->wait(), "", 0);
    stop();
  }
}

TEST_F(Session, ThatGoesAwayEndsTheItem) {
  start();
  session.end();
  expectResult(item->wait(), "error=session bus lost\n", 1);
}

TEST_F(Session, WhoseBusCannotBeReachedHasNoItem) {
  session.end();
  const ProcessResult result = startAnother()->wait();
  EXPECT_EQ(result.output, "error=no session bus\n");
  EXPECT_EQ(result.errors, "lumowatt: cannot connect to the session bus: Connection refused\n");
  EXPECT_EQ(result.status, 1);
}

TEST_F(Session, WhoseBusIsNotKnownHasNoItem) {
  variables = {{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", ""}};
  const ProcessResult result = startAnother()->wait();
  EXPECT_EQ(result.output, "error=no session bus\n");
  EXPECT_EQ(result.status, 1);
}

TEST_F(Session, WithoutTheDesktopModuleHasNoItem) {
  const TemporaryFolder folder;
  std::filesystem::copy(LUMOWATT_PROGRAM, folder.path() / "lumowatt");
  const ProcessResult result = runProcess({folder.path() / "lumowatt"}, machine.environment());
  EXPECT_EQ(result.output, "error=no desktop\n");
  EXPECT_NE(result.errors.find("lumowatt-desktop.so: cannot open shared object file"),
            std::string::npos)
      << result.errors;
  EXPECT_EQ(result.status, 1);
}

TEST_F(CrampedSession, ThatTellsOfNoSignalsHasAnItemAllTheSame) {
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
