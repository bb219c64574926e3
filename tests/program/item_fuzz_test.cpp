#include <array>
#include <numeric>
#include <random>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

/// Client that calls random methods of the item and its menu, but never chooses to quit.
class Fuzzer {
 public:
  explicit Fuzzer(const Panel& panel) : panel_(panel) {}

  void call() {
    switch (upTo(10)) {
      case 0:
        panel_.callMenu("GetLayout", "iias", id(), integer(), 2, text(), text());
        break;
      case 1:
        callWithIds("GetGroupProperties");
        break;
      case 2:
        panel_.callMenu("GetProperty", "is", id(), text());
        break;
      case 3:
      case 4:
        event();
        break;
      case 5:
        events();
        break;
      case 6:
        panel_.callMenu("AboutToShow", "i", id());
        break;
      case 7:
        callWithIds("AboutToShowGroup");
        break;
      case 8:
        panel_.callItem(method(), "ii", integer(), integer());
        break;
      case 9:
        panel_.callMenu(method(), "sv", text(), "aai", 1, 1, integer());
        break;
      default:
        panel_.callMenu(method(), "ai", 2, id(), id());
    }
  }

 private:
  int upTo(int maximum) { return std::uniform_int_distribution<>(0, maximum)(random_); }

  std::int32_t integer() {
    constexpr std::array interesting{INT32_MIN, -2, -1, 0, 1, 2, 100, INT32_MAX};
    return upTo(1) == 0 ? interesting.at(static_cast<std::size_t>(upTo(7)))
                        : static_cast<std::int32_t>(random_());
  }

  std::int32_t id() {
    constexpr std::array known{0, 1, 4, 9, 100, 101, 201, 202, 203, 205, 30101, 30104, 301};
    return upTo(3) > 0 ? known.at(static_cast<std::size_t>(upTo(12))) : integer();
  }

  const char* text() {
    constexpr std::array texts{"label",  "clicked", "closed",       "",
                               "opened", "type",    "toggle-state", "%s%n",
                               "Scroll", "Get_All", "visible",      "shortcut"};
    return texts.at(static_cast<std::size_t>(upTo(11)));
  }

  const char* method() {
    constexpr std::array methods{"GetLayout",  "GetGroupProperties", "GetProperty",      "Event",
                                 "EventGroup", "AboutToShow",        "AboutToShowGroup", "Scroll"};
    return methods.at(static_cast<std::size_t>(upTo(7)));
  }

  void event() {
    const std::int32_t chosen = id();
    if (chosen != menu_id::quit) panel_.callMenu("Event", "isvu", chosen, text(), "s", text(), 7U);
  }

  void events() {
    sd_bus_message* const message = panel_.newMenuCall("EventGroup");
    sd_bus_message_open_container(message, 'a', "(isvu)");
    for (int i = upTo(5); i > 0; --i) {
      const std::int32_t chosen = id();
      sd_bus_message_append(message, "(isvu)", chosen == menu_id::quit ? 0 : chosen, text(), "i", 5,
                            7U);
    }
    sd_bus_message_close_container(message);
    panel_.call(message);
  }

  void callWithIds(const char* method) {
    std::vector<std::int32_t> ids(static_cast<std::size_t>(upTo(50) == 0 ? 5000 : upTo(9)));
    for (std::int32_t& each : ids) each = id();
    sd_bus_message* const message = panel_.newMenuCall(method);
    sd_bus_message_append_array(message, 'i', ids.data(), ids.size() * sizeof ids[0]);
    if (method == std::string_view("GetGroupProperties")) {
      sd_bus_message_append(message, "as", 1, text());
    }
    panel_.call(message);
  }

  const Panel& panel_;
  std::mt19937 random_{20260101};
};

/// Fixture for an item with an untrusted client.
class FuzzedItem : public ItemTest {
 protected:
  Json layout() const { return panel->callMenu("GetLayout", "iias", 0, -1, 0).values.at(1); }
};

}  // namespace

TEST_F(FuzzedItem, SurvivesTenThousandRandomCallsUnchanged) {
  start();
  Fuzzer fuzzer(*panel);
  for (int i = 0; i < 2000; ++i) fuzzer.call();
  const long before = item->residentMemory();
  for (int i = 0; i < 8000; ++i) fuzzer.call();
  ASSERT_TRUE(item->isRunning());
  if (!isSanitized) {
    EXPECT_LE(item->residentMemory(), before + 64);
  }

  panel->open();
  const Json menu = layout();
  stop();
  start();
  EXPECT_EQ(menu, layout());
}

TEST_F(FuzzedItem, AnswersMillionsOfIdsWithoutRetainingMemory) {
  start();
  std::vector<std::int32_t> ids(2'000'000);
  std::iota(ids.begin(), ids.end(), 1);
  const auto request = [&](const char* method) {
    sd_bus_message* const message = panel->newMenuCall(method);
    sd_bus_message_append_array(message, 'i', ids.data(), ids.size() * sizeof ids[0]);
    if (method == std::string_view("GetGroupProperties")) {
      sd_bus_message_append(message, "as", 1, "label");
    }
    return panel->call(message);
  };
  const long before = item->residentMemory();
  EXPECT_EQ(request("GetGroupProperties").values.at(0).size(), 22U + 4U);
  EXPECT_EQ(request("AboutToShowGroup").values.at(1).size(), 2'000'000U - 22U - 4U);
  if (!isSanitized) {
    EXPECT_LE(item->residentMemory(), before + 1024);
  }
}

TEST_F(FuzzedItem, AnswersThousandsOfPropertyNamesWithoutRetainingMemory) {
  start();
  const long before = item->residentMemory();
  sd_bus_message* const message = panel->newMenuCall("GetLayout");
  sd_bus_message_append(message, "ii", menu_id::colors, -1);
  sd_bus_message_open_container(message, 'a', "s");
  for (int i = 0; i < 100'000; ++i) {
    sd_bus_message_append(message, "s", ("no property " + std::to_string(i)).c_str());
  }
  sd_bus_message_append(message, "s", "label");
  sd_bus_message_close_container(message);
  EXPECT_EQ(panel->call(message).values.at(1),
            (Json{menu_id::colors, {{"label", "Colors"}}, Json::array()}));
  if (!isSanitized) {
    EXPECT_LE(item->residentMemory(), before + 4096);
  }
}

}  // namespace lumowatt
