#include "menubar/app_fixture.h"

#include <cmath>

namespace lumowatt {

PropertyDictionary properties(const BatteryState& state) {
  const auto number = [](std::int64_t value) { return PropertyValue::number(value); };
  PropertyDictionary telemetry;
  telemetry.set("BatteryPower", number(std::llround(state.watts * 1000.0)));
  PropertyDictionary all;
  all.set("MaxCapacity", number(100));
  all.set("CurrentCapacity", number(state.percent));
  all.set("ExternalConnected", number(state.external ? 1 : 0));
  all.set("IsCharging", number(state.charging ? 1 : 0));
  all.set("FullyCharged", number(state.full ? 1 : 0));
  all.set(state.charging ? "AvgTimeToFull" : "AvgTimeToEmpty",
          number(state.minutes.value_or(65535)));
  all.set("PowerTelemetryData", PropertyValue::dictionary(telemetry));
  return all;
}

AppTest::AppTest() : app(App::make(desktop, battery, "1.0.0")) { setBattery({}); }

void AppTest::refreshWith(const BatteryState& state) {
  setBattery(state);
  app->refresh();
}

MenuItem AppTest::item(const std::string& title) const {
  for (const MenuItem& item : menu) {
    if (titleOf(item) == title) return item;
    const auto* const submenu = std::get_if<Submenu>(&item);
    if (submenu == nullptr) continue;
    for (const MenuItem& child : submenu->items) {
      if (titleOf(child) == title) return child;
    }
  }
  ADD_FAILURE() << "no item " << title;
  return {};
}

void AppTest::chooseItem(const std::string& title) {
  openMenu();
  const MenuItem chosen = item(title);
  const Choice* const choice = choiceOf(chosen);
  ASSERT_NE(choice, nullptr) << title;
  app->perform(*choice);
}

}  // namespace lumowatt
