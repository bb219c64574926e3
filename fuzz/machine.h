#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumowatt::fuzz {

/// File of a simulated machine. An entry without a value is a folder.
struct Entry {
  std::string path;  ///< starts with "supplies/" or "hwmon/", relative to the machine's folder
  std::optional<std::string> value;
};

/// Parses the entries of an input, in the order of the input. Omits duplicate paths and names that
/// are not valid file names. A line such as `BAT0/energy_now=...` is a file; a line without "=" is
/// a folder. Devices whose names begin with "hwmon" are sensors.
std::vector<Entry> parseEntries(std::string_view input);

/// Entries of a machine on disk. The constructor creates them; the destructor removes them.
class Machine {
 public:
  Machine(const std::string& folder, const std::vector<Entry>& entries);
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;
  ~Machine();

 private:
  std::vector<std::string> createdPaths_;
};

}  // namespace lumowatt::fuzz
