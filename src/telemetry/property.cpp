#include "telemetry/property.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace lumowatt {

const PropertyValue* PropertyDictionary::find(std::string_view key) const {
  const auto found = std::find_if(properties_.begin(), properties_.end(),
                                  [key](const Property& property) { return property.key == key; });
  return found == properties_.end() ? nullptr : &found->value;
}

void PropertyDictionary::set(std::string_view key, PropertyValue value) {
  for (Property& property : properties_) {
    if (property.key == key) {
      property.value = std::move(value);
      return;
    }
  }
  properties_.push_back({std::string(key), std::move(value)});
}

PropertyValue PropertyValue::number(std::int64_t value) {
  PropertyValue result;
  result.content_ = std::bit_cast<std::uint64_t>(value);
  return result;
}

PropertyValue PropertyValue::text(std::string value) {
  PropertyValue result;
  result.content_ = std::move(value);
  return result;
}

PropertyValue PropertyValue::dictionary(PropertyDictionary value) {
  PropertyValue result;
  result.content_ = std::move(value);
  return result;
}

std::optional<std::uint64_t> PropertyValue::asNumber() const {
  const auto* number = std::get_if<std::uint64_t>(&content_);
  return number ? std::optional(*number) : std::nullopt;
}

const std::string* PropertyValue::asText() const { return std::get_if<std::string>(&content_); }

const PropertyDictionary* PropertyValue::asDictionary() const {
  return std::get_if<PropertyDictionary>(&content_);
}

std::optional<std::int64_t> signedNumber(const PropertyValue* value) {
  const auto number = value ? value->asNumber() : std::nullopt;
  return number ? std::optional(std::bit_cast<std::int64_t>(*number)) : std::nullopt;
}

}  // namespace lumowatt
