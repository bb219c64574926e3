#pragma once

#include <optional>
#include <utility>

#include "telemetry/battery_service.h"

namespace lumowatt {

/// Battery service that returns the properties that a test sets, and counts the calls.
class ScriptedBattery : public BatteryService {
 public:
  ScriptedBattery() = default;
  explicit ScriptedBattery(PropertyDictionary properties) : properties_(std::move(properties)) {}

  std::optional<PropertyDictionary> properties() override {
    ++callCount;
    return properties_;
  }

  /// Sets the properties that later calls return. std::nullopt means that there is no battery.
  void set(std::optional<PropertyDictionary> properties) { properties_ = std::move(properties); }

  int callCount = 0;  ///< number of calls of `properties`

 private:
  std::optional<PropertyDictionary> properties_;
};

}  // namespace lumowatt
