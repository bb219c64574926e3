#include <cstddef>
#include <cstdlib>

#include "cli/command_line.h"
#include "cli/commands.h"
#include "cli/standard_output.h"
#include "platform/platform.h"

int main(int argc, char** argv) {
  using namespace lumowatt;
  const Command command = parseCommandLine({argv, static_cast<std::size_t>(argc)});
  const auto battery = platform::batteryService();
  const auto [output, status] = carryOut(command, LUMOWATT_VERSION, *battery);
  return writeToStandardOutput(output) ? status : EXIT_FAILURE;
}
