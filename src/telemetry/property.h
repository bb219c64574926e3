#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumowatt {

struct Property;
class PropertyValue;

/// The properties of a battery service: values of mixed types with unique text keys.
class PropertyDictionary {
 public:
  /// Returns the value of `key`, or null if the key is missing. The pointer is valid until the
  /// dictionary changes.
  const PropertyValue* find(std::string_view key) const;

  /// Sets the value of `key`. Replaces an existing value.
  void set(std::string_view key, PropertyValue value);

  using Iterator = std::vector<Property>::const_iterator;
  bool empty() const { return begin() == end(); }
  Iterator begin() const;
  Iterator end() const;

 private:
  std::vector<Property> properties_;  // about twenty keys: linear search is faster than a tree
};

/// One value of a property dictionary: a number, text, a dictionary, or something else.
class PropertyValue {
 public:
  /// Creates a value of a type that this program does not read, such as data, a date or an array.
  PropertyValue() = default;

  /// Creates a number, stored as 64 unsigned bits in two's complement, as in the I/O registry. A
  /// boolean is stored as the number 0 or 1.
  static PropertyValue number(std::int64_t value);
  static PropertyValue text(std::string value);
  static PropertyValue dictionary(PropertyDictionary value);

  /// Returns the number, or std::nullopt if the value has another type.
  std::optional<std::uint64_t> asNumber() const;

  /// Returns the text, or null if the value has another type.
  const std::string* asText() const;

  /// Returns the dictionary, or null if the value has another type.
  const PropertyDictionary* asDictionary() const;

 private:
  std::variant<std::monostate, std::uint64_t, std::string, PropertyDictionary> content_;
};

struct Property {
  std::string key;
  PropertyValue value;
};

// Defined after Property because libc++ 21 needs the complete type, for its alignment.
inline PropertyDictionary::Iterator PropertyDictionary::begin() const {
  return properties_.begin();
}
inline PropertyDictionary::Iterator PropertyDictionary::end() const { return properties_.end(); }

/// Returns the 64 bits of a registry number, reinterpreted as a signed integer. Returns
/// std::nullopt if `value` is null or not a number.
std::optional<std::int64_t> signedNumber(const PropertyValue* value);

}  // namespace lumowatt
