#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace lumowatt {

inline constexpr bool isSanitized = LUMOWATT_SANITIZED;

/// Name of a fixture with a battery.
inline const std::string anyMachine = "01-thinkpad-lnv45n1-discharging";

/// Mocked machine on which programs can be run. umockdev replaces /sys by a folder.
class Machine {
 public:
  /// Creates a machine with only these attributes. The keys are paths below the power-supply
  /// folder.
  explicit Machine(const std::map<std::string, std::string>& attributes);

  /// Creates a machine from a fixture.
  explicit Machine(const std::string& fixture);

  /// Writes an attribute. Its path is relative to the power-supply folder.
  void set(const std::string& attribute, const std::string& value) const;
  /// Removes an attribute or a folder. Its path is relative to the power-supply folder.
  void remove(const std::string& attribute) const;

  std::filesystem::path powerSupplyFolder() const {
    return root_.path() / "sys/class/power_supply";
  }

  /// Returns the environment variables that run a program on this machine. They also preload
  /// `library`.
  Environment environment(const std::string& library = "") const;

 private:
  TemporaryFolder root_;
};

/// Runs the built program on a fixture.
ProcessResult run(const std::string& fixture, std::vector<std::string> arguments);

/// Runs shell commands. In them, `lumowatt` runs the built program on a machine with a battery.
ProcessResult runShell(const std::string& commands);

/// Makes the built program write a snapshot on a fixture. Returns the contents of the file.
std::string snapshot(const std::vector<std::string>& arguments,
                     const std::string& fixture = anyMachine);

/// Expects this output and exit status, and an empty standard error.
void expectResult(const ProcessResult& result, const std::string& output, int status);

}  // namespace lumowatt
