#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

#include "menubar/desktop.h"

namespace lumowatt::freedesktop {

/// Preferences as a text file with a line `key=value` for each, in which everything else stays as
/// it is. Read afresh at every use. Of several lines with a key the first counts.
class PreferenceFile {
 public:
  explicit PreferenceFile(std::string path) : path_(std::move(path)) {}

  /// What is stored under each of the keys, by one reading of the file; nothing when it cannot be
  /// read. A number is that at the start of the value, the nearest one that 64 bits can hold, and 0
  /// for a value that begins with none. True are "true", "yes" and "on", in letters of either case,
  /// and every whole number but 0.
  std::vector<std::optional<StoredPreference>> read(
      const std::vector<std::string_view>& keys) const;

  /// Stores a value. Fails also if the file exists but cannot be read, or would be larger than
  /// can be read: its lines would be lost.
  Result<> set(std::string_view key, std::string_view value) const;

 private:
  std::string path_;
};

}  // namespace lumowatt::freedesktop
