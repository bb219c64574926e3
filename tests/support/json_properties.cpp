#include "support/json_properties.h"

#include "support/files.h"

namespace lumowatt {

namespace {

using nlohmann::json;

PropertyValue valueFromJson(const json& value) {
  if (value.is_number_unsigned()) {
    return PropertyValue::number(static_cast<std::int64_t>(value.get<std::uint64_t>()));
  }
  if (value.is_number_integer()) return PropertyValue::number(value.get<std::int64_t>());
  if (value.is_boolean()) return PropertyValue::number(value.get<bool>() ? 1 : 0);
  if (value.is_string()) return PropertyValue::text(value.get<std::string>());
  if (value.is_object()) return PropertyValue::dictionary(propertiesFromJson(value));
  return {};
}

json jsonFromValue(const PropertyValue& value) {
  if (const auto number = signedNumber(&value)) return *number;
  if (const auto* text = value.asText()) return *text;
  if (const auto* dictionary = value.asDictionary()) return jsonFromProperties(*dictionary);
  return nullptr;
}

}  // namespace

json jsonFile(const std::filesystem::path& path) { return json::parse(fileContents(path)); }

PropertyDictionary propertiesFromJson(const json& object) {
  PropertyDictionary properties;
  for (const auto& [key, value] : object.items()) properties.set(key, valueFromJson(value));
  return properties;
}

json jsonFromProperties(const PropertyDictionary& properties) {
  json object = json::object();
  for (const Property& property : properties) object[property.key] = jsonFromValue(property.value);
  return object;
}

}  // namespace lumowatt
