#pragma once

#include <systemd/sd-bus.h>

#include <nlohmann/json.hpp>

namespace lumowatt {

/// The next value of a message as JSON: a dictionary as an object, a structure as an array, a
/// variant as what it holds.
nlohmann::json readValue(sd_bus_message* message);

/// All that is left of a message, as an array.
nlohmann::json readValues(sd_bus_message* message);

}  // namespace lumowatt
