#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumowatt::fuzz {

/// A file of a machine's, or without a value a folder.
struct Entry {
  std::string path;  ///< below the machine's folder: in "supplies" or "hwmon"
  std::optional<std::string> value;
};

/// The entries of an input that a file system can hold, each path once, in the order of the input.
/// A line is a file, `BAT0/energy_now=...`; without a "=" it is a folder. Devices whose names begin
/// with "hwmon" are sensors.
std::vector<Entry> entries(std::string_view input);

/// The entries are in a folder as long as it lives.
class Machine {
 public:
  Machine(const std::string& folder, const std::vector<Entry>& entries);
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;
  ~Machine();

 private:
  std::vector<std::string> made_;
};

}  // namespace lumowatt::fuzz
