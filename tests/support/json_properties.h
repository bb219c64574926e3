#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>

#include "telemetry/property.h"

namespace lumowatt {

/// What the dictionary has for a time in minutes that is not known.
inline constexpr int unknownMinutes = 65535;

nlohmann::json jsonFile(const std::filesystem::path& path);

/// A property dictionary from its JSON form: integers of either sign and truth values are numbers;
/// fractions, arrays and nulls are something else.
PropertyDictionary propertiesFromJson(const nlohmann::json& object);

/// The way back, for comparing and for messages: numbers signed, keys sorted.
nlohmann::json jsonFromProperties(const PropertyDictionary& properties);

}  // namespace lumowatt
