#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace lumowatt {

inline constexpr bool sanitized = LUMOWATT_SANITIZED;

/// A fixture with a battery.
inline const std::string anyMachine = "01-thinkpad-lnv45n1-discharging";

/// A machine that a program can be run on: umockdev shows it a /sys of ours.
class Machine {
 public:
  /// One with no more than the given attributes, by their paths below the power-supply folder.
  explicit Machine(const std::map<std::string, std::string>& attributes);

  /// A fixture.
  explicit Machine(const std::string& fixture);

  /// Changes an attribute, by its path below the power-supply folder.
  void set(const std::string& attribute, const std::string& value) const;
  void remove(const std::string& attribute) const;

  std::filesystem::path powerSupplyFolder() const {
    return root_.path() / "sys/class/power_supply";
  }

  /// What makes a program see it, with another library to preload.
  Environment environment(const std::string& library = "") const;

 private:
  TemporaryFolder root_;
};

/// Runs the built program on a fixture.
ProcessResult run(const std::string& fixture, std::vector<std::string> arguments);

/// Runs shell commands in which `lumowatt` is the program on a machine with a battery.
ProcessResult runShell(const std::string& commands);

/// The contents of the file of a snapshot that the built program takes of a fixture.
std::string snapshot(const std::vector<std::string>& arguments,
                     const std::string& machine = anyMachine);

/// Expects that, and nothing on the standard error.
void expectResult(const ProcessResult& result, const std::string& output, int status);

}  // namespace lumowatt
