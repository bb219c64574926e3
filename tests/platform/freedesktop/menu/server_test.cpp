#include "platform/freedesktop/menu/server.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "platform/freedesktop/panel_connection.h"
#include "program/message_json.h"

namespace lumowatt::freedesktop {

namespace {

/// Application whose menu consists of a report and a separator.
class ReportApplication : public ApplicationDelegate {
 public:
  void applicationDidFinishLaunching() override {}
  Menu menuWillOpen() override { return menu(); }
  Menu menu() override {
    Menu menu;
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);) menu.emplace_back(MenuLine{line});
    menu.emplace_back(MenuSeparator{});
    return menu;
  }
  void perform(const Choice&) override {}

  std::string report = "none yet";
};

/// Menu that a panel has read. The panel reads no further messages until `processMessages`.
class MenuServerTest : public testing::Test {
 protected:
  MenuServerTest() {
    EXPECT_GE(sd_bus_call_method_async(connection.panel(), nullptr, nullptr, MenuServer::path,
                                       "com.canonical.dbusmenu", "GetLayout", nullptr, nullptr,
                                       "iias", 0, -1, 0),
              0);
    connection.processMessages();
    reportRows(1);
    connection.processMessages();
    EXPECT_EQ(lastFirstRow, "1");
  }

  /// Passes a report to the server. The first row is `number`; odd numbers add a second row.
  void reportRows(int number) {
    application_.report = std::to_string(number) + (number % 2 == 1 ? "\nanother row" : "");
    server_.updateRows(application_.report);
  }

  void makeCompact() {
    server_.setCompact(true);
    connection.processMessages();
  }

  std::string lastFirstRow;  ///< first row in the last signal
  PanelConnection connection{[this](sd_bus_message* message) { handleMessage(message); }};

 private:
  void handleMessage(sd_bus_message* message) {
    if (sd_bus_message_is_signal(message, nullptr, "ItemsPropertiesUpdated") <= 0) return;
    const nlohmann::json entries = readValue(message);
    for (const auto& entry : entries) {
      if (entry.at(0) == 1) lastFirstRow = entry.at(1).at("label").get<std::string>();
    }
  }

  ReportApplication application_;
  MenuServer server_{connection.bus(), application_, [](const Choice&) {}};
};

}  // namespace

TEST_F(MenuServerTest, LimitsQueuedMessagesWhileCongested) {
  for (int i = 0; i < 1000; ++i) reportRows(i);
  const std::uint64_t queued = connection.queuedMessages();
  EXPECT_GT(queued, 0U);
  EXPECT_LE(queued, 20U);
  reportRows(1000);
  EXPECT_EQ(connection.queuedMessages(), queued);
}

TEST_F(MenuServerTest, SignalsChangesWithTheNextReportAfterCongestion) {
  for (int i = 0; i < 1000; ++i) reportRows(i);
  connection.processMessages();
  EXPECT_NE(lastFirstRow, "999");
  EXPECT_EQ(connection.queuedMessages(), 0U);
  for (const int next : {1000, 1001}) reportRows(next);  // their numbers of rows differ
  connection.processMessages();
  EXPECT_EQ(lastFirstRow, "1001");
}

TEST_F(MenuServerTest, SignalsAnUnchangedReportAfterCongestion) {
  for (int i = 0; i < 1000; ++i) reportRows(i);
  connection.processMessages();
  EXPECT_NE(lastFirstRow, "999");
  EXPECT_EQ(connection.queuedMessages(), 0U);
  reportRows(999);
  connection.processMessages();
  EXPECT_EQ(lastFirstRow, "999");
}

TEST_F(MenuServerTest, DoesNotUpdateACompactMenuForAReport) {
  makeCompact();
  EXPECT_EQ(lastFirstRow, "1\nanother row");
  for (const int next : {2, 3}) reportRows(next);
  connection.processMessages();
  EXPECT_EQ(lastFirstRow, "1\nanother row");
}

}  // namespace lumowatt::freedesktop
