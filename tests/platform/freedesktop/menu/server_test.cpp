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

/// A menu that a panel has opened, which takes nothing from then on.
class MenuServerTest : public testing::Test {
 protected:
  MenuServerTest() {
    EXPECT_GE(
        sd_bus_call_method_async(connection.panel(), nullptr, nullptr, MenuServer::path,
                                 "com.canonical.dbusmenu", "AboutToShow", nullptr, nullptr, "i", 0),
        0);
    connection.take();
    follow("first");
    connection.take();
    EXPECT_EQ(heard, "first");
  }

  void follow(const std::string& report) {
    application_.report = report;
    server_.follow(report);
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
  for (int i = 0; i < 1000; ++i) follow(std::to_string(i));
  const std::uint64_t waiting = connection.waiting();
  EXPECT_GT(waiting, 0U);
  EXPECT_LE(waiting, 20U);
  follow("a report\nof two rows");
  EXPECT_EQ(connection.waiting(), waiting);
}

TEST_F(MenuServerTest, TellsABusThatTakesAgainOfWhatChangedMeanwhileWithTheNextReport) {
  for (int i = 0; i < 1000; ++i) follow(std::to_string(i));
  connection.take();
  EXPECT_NE(heard, "999");
  EXPECT_EQ(connection.waiting(), 0U);
  follow("1000");
  connection.take();
  EXPECT_EQ(heard, "1000");
}

TEST_F(MenuServerTest, TellsABusThatTakesAgainOfAReportThatStaysTheSame) {
  for (int i = 0; i < 1000; ++i) follow(std::to_string(i));
  connection.take();
  EXPECT_NE(heard, "999");
  EXPECT_EQ(connection.waiting(), 0U);
  follow("999");
  connection.take();
  EXPECT_EQ(heard, "999");
}

}  // namespace lumowatt::freedesktop
