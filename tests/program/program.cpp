#include "program/program.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace lumowatt {

Machine::Machine(const std::map<std::string, std::string>& attributes) {
  for (const auto& [path, value] : attributes) set(path, value);
}

Machine::Machine(const std::string& fixture) {
  std::filesystem::copy(fixturePath("linux", fixture), root_.path() / "sys",
                        std::filesystem::copy_options::recursive);
}

void Machine::set(const std::string& attribute, const std::string& value) const {
  root_.write("sys/class/power_supply/" + attribute, value + "\n");
}

void Machine::remove(const std::string& attribute) const {
  std::filesystem::remove_all(powerSupplyFolder() / attribute);
}

Environment Machine::environment(const std::string& library) const {
  // AddressSanitizer must be the first preloaded library.
  const std::string sanitizer = isSanitized ? "libasan.so.8 " : "";
  // The invalid address keeps the program away from the session of the user who runs the tests.
  return {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/none"},
          {"UMOCKDEV_DIR", root_.path()},
          {"LD_PRELOAD", sanitizer + library + " libumockdev-preload.so.0"}};
}

ProcessResult run(const std::string& fixture, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), LUMOWATT_PROGRAM);
  return runProcess(arguments, Machine(fixture).environment());
}

ProcessResult runShell(const std::string& commands) {
  const Machine machine(anyMachine);
  std::string prefix = "env";
  for (const auto& [name, value] : machine.environment()) {
    prefix.append(" ").append(name).append("='").append(value).append("'");
  }
  return runProcess({"bash", "-c", "lumowatt() { " + prefix + " \"$0\" \"$@\"; }\n" + commands,
                     LUMOWATT_PROGRAM});
}

std::string snapshot(const std::vector<std::string>& arguments, const std::string& fixture) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  std::vector<std::string> all{"--snapshot", path};
  all.insert(all.end(), arguments.begin(), arguments.end());
  expectResult(run(fixture, all), "wrote " + path + "\n", 0);
  return fileContents(path);
}

void expectResult(const ProcessResult& result, const std::string& output, int status) {
  EXPECT_EQ(result.output, output);
  EXPECT_EQ(result.status, status);
  EXPECT_EQ(result.errors, "");
}

}  // namespace lumowatt
