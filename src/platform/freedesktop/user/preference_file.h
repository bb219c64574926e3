#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumowatt::freedesktop {

/// Preferences as a text file with a line `key=value` for each, in which everything else stays as
/// it is. Read afresh at every use. Of several lines with a key the first counts.
class PreferenceFile {
 public:
  explicit PreferenceFile(std::string path) : path_(std::move(path)) {}

  /// Whether there is a value under the key. A file that cannot be read has none.
  bool has(std::string_view key) const;

  /// The number at the start of the value; 0 for one that begins with none. What 64 bits cannot
  /// hold is the nearest that they can.
  std::int64_t integer(std::string_view key) const;

  /// Whether the value is "true", "yes", "on" or "1", in letters of either case.
  bool boolean(std::string_view key) const;

  /// Stores a value. False when that fails, as it does when the file is there but cannot be read,
  /// or could not be afterwards: its lines would be lost.
  bool set(std::string_view key, std::string_view value) const;

 private:
  std::optional<std::string> value(std::string_view key) const;

  std::string path_;
};

}  // namespace lumowatt::freedesktop
