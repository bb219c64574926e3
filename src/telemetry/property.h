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

/// The properties of a battery service: values of mixed types under text keys, each key once.
class PropertyDictionary {
 public:
  /// The value under `key`, or null. Valid until the dictionary changes.
  const PropertyValue* find(std::string_view key) const;

  /// Puts `value` under `key`, in place of the value that was there.
  void set(std::string_view key, PropertyValue value);

  using Iterator = std::vector<Property>::const_iterator;
  bool empty() const { return begin() == end(); }
  Iterator begin() const;
  Iterator end() const;

 private:
  std::vector<Property> properties_;  // some twenty keys: a search beats a tree
};

/// One value of a property dictionary: a number, text, a dictionary, or something else.
class PropertyValue {
 public:
  /// Something that this program does not read: data, a date, an array. Present, but no number.
  PropertyValue() = default;

  /// A number is kept as 64 unsigned bits, a negative one as its two's complement, as an I/O
  /// registry does. A truth value is the number 0 or 1.
  static PropertyValue number(std::int64_t value);
  static PropertyValue text(std::string value);
  static PropertyValue dictionary(PropertyDictionary value);

  /// Each is absent (or null) when the value is of another type.
  std::optional<std::uint64_t> asNumber() const;
  const std::string* asText() const;
  const PropertyDictionary* asDictionary() const;

 private:
  std::variant<std::monostate, std::uint64_t, std::string, PropertyDictionary> content_;
};

struct Property {
  std::string key;
  PropertyValue value;
};

// They need the whole of Property: libc++ 21 asks for its alignment.
inline PropertyDictionary::Iterator PropertyDictionary::begin() const {
  return properties_.begin();
}
inline PropertyDictionary::Iterator PropertyDictionary::end() const { return properties_.end(); }

/// A registry number as a signed integer: its 64 bits, unchanged. Absent when there is no value
/// (null) or it is not a number.
std::optional<std::int64_t> signedNumber(const PropertyValue* value);

}  // namespace lumowatt
