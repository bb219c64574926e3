#include "cli/commands.h"

#include <cstdlib>

#include "base/error_report.h"
#include "cli/dump.h"
#include "menubar/app.h"
#include "render/snapshot.h"
#include "telemetry/read.h"
#include "telemetry/sample_reading.h"

namespace lumowatt {

namespace {

Outcome success(std::string output) { return {std::move(output), EXIT_SUCCESS}; }

Outcome failure(std::string_view reason) {
  return {"error=" + std::string(reason) + "\n", EXIT_FAILURE};
}

/// Runs each kind of command.
struct CommandRunner {
  std::string_view version;
  const Services& services;

  Outcome operator()(const PrintVersion&) const { return success(std::string(version) + "\n"); }

  Outcome operator()(const WriteSnapshot& snapshot) const {
    const auto bitmaps = services.makeBitmaps();
    const auto reading = snapshot.sample ? sampleReading(*snapshot.sample) : read(services.battery);
    if (!reading) return failure(snapshot.sample ? "unknown sample" : "no battery");
    const auto written =
        writeSnapshot(*reading, snapshot.path, snapshot.sample.has_value(), *bitmaps);
    return written ? success("wrote " + snapshot.path + "\n") : failure(written.failure().reason);
  }

  Outcome operator()(const PrintDump&) const {
    const auto reading = read(services.battery);
    return reading ? success(dump(*reading)) : failure("no battery");
  }

  Outcome operator()(const ShowMenuBarItem&) const {
    const auto desktop = services.makeDesktop();
    if (!desktop) {
      reportError("cannot show the item", desktop.failure().reason);
      return failure("no desktop");
    }
    const auto result = (*desktop)->run(App::make(**desktop, services.battery, version));
    return result ? success("") : failure(result.failure().reason);
  }
};

}  // namespace

Outcome runCommand(const Command& command, std::string_view version, const Services& services) {
  return std::visit(CommandRunner{version, services}, command);
}

}  // namespace lumowatt
