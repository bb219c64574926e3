#include "platform/freedesktop/menu/server.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "platform/freedesktop/panel_connection.h"
#include "program/message_json.h"

namespace lumowatt::freedesktop {

namespace {

/// An application whose menu is a report and a separator.
class Reporter : public ApplicationDelegate {
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

/// A menu that a panel has read, which takes nothing from then on.
class MenuServerTest : public testing::Test {
 protected:
  MenuServerTest() {
    EXPECT_GE(sd_bus_call_method_async(connection.panel(), nullptr, nullptr, MenuServer::path,
                                       "com.canonical.dbusmenu", "GetLayout", nullptr, nullptr,
                                       "iias", 0, -1, 0),
              0);
    connection.take();
    follow(1);
    connection.take();
    EXPECT_EQ(heard, "1");
  }

  /// The report has that number in its first row, and another row when it is odd.
  void follow(int number) {
    application_.report = std::to_string(number) + (number % 2 == 1 ? "\nanother row" : "");
    server_.follow(application_.report);
  }

  void makeCompact() {
    server_.setCompact(true);
    connection.take();
  }

  std::string heard;  ///< the first row, as it was told last
  PanelConnection connection{[this](sd_bus_message* message) { hear(message); }};

 private:
  void hear(sd_bus_message* message) {
    if (sd_bus_message_is_signal(message, nullptr, "ItemsPropertiesUpdated") <= 0) return;
    const nlohmann::json entries = readValue(message);
    for (const auto& entry : entries) {
      if (entry.at(0) == 1) heard = entry.at(1).at("label").get<std::string>();
    }
  }

  Reporter application_;
  MenuServer server_{connection.bus(), application_, [](const Choice&) {}};
};

}  // namespace

TEST_F(MenuServerTest, ForABusThatTakesNothingHasNoMoreAndMoreWaiting) {
  for (int i = 0; i < 1000; ++i) follow(i);
  const std::uint64_t waiting = connection.waiting();
  EXPECT_GT(waiting, 0U);
  EXPECT_LE(waiting, 20U);
  follow(1000);
  EXPECT_EQ(connection.waiting(), waiting);
}

TEST_F(MenuServerTest, TellsABusThatTakesAgainOfWhatChangedMeanwhileWithTheNextReport) {
  for (int i = 0; i < 1000; ++i) follow(i);
  connection.take();
  EXPECT_NE(heard, "999");
  EXPECT_EQ(connection.waiting(), 0U);
  for (const int next : {1000, 1001}) follow(next);  // one of which has other rows
  connection.take();
  EXPECT_EQ(heard, "1001");
}

TEST_F(MenuServerTest, TellsABusThatTakesAgainOfAReportThatStaysTheSame) {
  for (int i = 0; i < 1000; ++i) follow(i);
  connection.take();
  EXPECT_NE(heard, "999");
  EXPECT_EQ(connection.waiting(), 0U);
  follow(999);
  connection.take();
  EXPECT_EQ(heard, "999");
}

TEST_F(MenuServerTest, InFewRowsIsNotChangedByAReport) {
  makeCompact();
  EXPECT_EQ(heard, "1\nanother row");
  for (const int next : {2, 3}) follow(next);
  connection.take();
  EXPECT_EQ(heard, "1\nanother row");
}

}  // namespace lumowatt::freedesktop
