#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

#include "menubar/desktop.h"

namespace lumowatt::freedesktop {

/// Text file of preferences with a line `key=value` for each preference. Reads the file on every
/// use. If several lines have the same key, uses the first one. Preserves all other lines.
class PreferenceFile {
 public:
  explicit PreferenceFile(std::string path) : path_(std::move(path)) {}

  /// Reads the file once. Returns one element for each key, which is empty if the key is missing or
  /// the file cannot be read. `integer` is the number at the start of the value, clamped to 64
  /// bits; 0 if the value does not start with a number. `boolean` is true for "true", "yes" and
  /// "on" in upper or lower case, and for every integer except 0.
  std::vector<std::optional<StoredPreference>> read(
      const std::vector<std::string_view>& keys) const;

  /// Stores a value. To preserve the lines of the file, also fails if an existing file cannot be
  /// read, or if the file would become too large to be read.
  Result<> set(std::string_view key, std::string_view value) const;

 private:
  std::string path_;
};

}  // namespace lumowatt::freedesktop
