#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>

#include "telemetry/property.h"

namespace lumowatt {

/// The value that marks a duration in minutes as unknown in the dictionary.
inline constexpr int unknownMinutes = 65535;

nlohmann::json jsonFile(const std::filesystem::path& path);

/// Converts a JSON object to a property dictionary. Integers and booleans become numbers.
/// Fractions, arrays and nulls become values of a type that the program does not read.
PropertyDictionary propertiesFromJson(const nlohmann::json& object);

/// Converts a property dictionary to a JSON object with signed numbers and sorted keys, for
/// comparisons and messages.
nlohmann::json jsonFromProperties(const PropertyDictionary& properties);

}  // namespace lumowatt
