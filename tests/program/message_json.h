#pragma once

#include <systemd/sd-bus.h>

#include <nlohmann/json.hpp>

namespace lumowatt {

/// Reads the next value of a message as JSON: a dictionary as an object, a structure as an array, a
/// variant as the value that it contains.
nlohmann::json readValue(sd_bus_message* message);

/// Reads the remaining values of a message as an array.
nlohmann::json readValues(sd_bus_message* message);

}  // namespace lumowatt
