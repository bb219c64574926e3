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

void AppTest::show(const BatteryState& state) {
  setBattery(state);
  app->refresh();
}

const MenuItem& AppTest::item(const std::string& title) const {
  static const MenuItem none;
  for (const MenuItem& item : app->menu()) {
    if (item.title == title) return item;
    for (const MenuItem& choice : item.submenu) {
      if (choice.title == title) return choice;
    }
  }
  ADD_FAILURE() << "no item " << title;
  return none;
}

void AppTest::choose(const std::string& title) {
  app->menuWillOpen();
  const MenuItem chosen = item(title);
  app->perform(chosen);
}

}  // namespace lumowatt
