#include <csignal>
#include <cstddef>
#include <cstdlib>

#include "base/error_report.h"
#include "base/out_of_memory.h"
#include "base/output_file.h"
#include "cli/command_line.h"
#include "cli/commands.h"
#include "platform/platform.h"

int main(int argc, char** argv) {
  using namespace lumowatt;
  exitWhenOutOfMemory();
  // Ignore these signals so that a write to a closed pipe or beyond the limit of the file size
  // fails with an error code instead of ending the process.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);

  const Command command = parseCommandLine({argv, static_cast<std::size_t>(argc)});
  const auto battery = platform::batteryService();
  const Services services{.battery = *battery,
                          .makeBitmaps = platform::bitmapFactory,
                          .makeDesktop = platform::desktop};
  const auto [output, status] = runCommand(command, LUMOWATT_VERSION, services);
  if (const auto written = writeToStandardOutput(output); !written) {
    reportError("cannot write to the standard output", written.failure().reason);
    return EXIT_FAILURE;
  }
  return status;
}
