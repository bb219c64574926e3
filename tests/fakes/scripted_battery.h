#pragma once

#include <optional>
#include <utility>

#include "telemetry/battery_service.h"

namespace lumowatt {

/// A battery service that gives what it is told, and counts how often it is asked.
class ScriptedBattery : public BatteryService {
 public:
  ScriptedBattery() = default;
  explicit ScriptedBattery(PropertyDictionary properties) : properties_(std::move(properties)) {}

  std::optional<PropertyDictionary> properties() override {
    ++asked;
    return properties_;
  }

  /// From now on it gives these; none for no battery.
  void set(std::optional<PropertyDictionary> properties) { properties_ = std::move(properties); }

  int asked = 0;

 private:
  std::optional<PropertyDictionary> properties_;
};

}  // namespace lumowatt
