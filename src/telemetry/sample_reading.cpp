#include "telemetry/sample_reading.h"

namespace lumowatt {

namespace {

/// What the three have in common. The adapter is named even where it is not plugged in: such a
/// service remembers the last one.
Reading common() {
  Reading reading;
  reading.rawMax = 3849;
  reading.design = 4629;
  reading.nominal = 3976;
  reading.cycles = 312;
  reading.batteryVolts = 11.6;
  reading.adapterName = "30W USB-C Power Adapter";
  reading.adapterWatts = 30;
  return reading;
}

Reading draining() {
  Reading reading = common();
  reading.percent = 64;
  reading.rawCurrent = 2463;
  reading.batteryAmps = -0.95;
  reading.minutes = 228;
  reading.systemWatts = 11.0;
  reading.batteryWatts = -11.0;
  return reading;
}

Reading low() {
  Reading reading = common();
  reading.percent = 16;
  reading.rawCurrent = 616;
  reading.batteryAmps = -0.62;
  reading.minutes = 96;
  reading.systemWatts = 7.2;
  reading.batteryWatts = -7.2;
  return reading;
}

Reading full() {
  Reading reading = common();
  reading.percent = 100;
  reading.rawCurrent = 3849;
  reading.external = true;
  reading.full = true;
  reading.wallVolts = 20.1;
  reading.wallAmps = 0.3;
  reading.wallWatts = 6.0;
  reading.systemWatts = 6.0;
  return reading;
}

}  // namespace

std::optional<Reading> sampleReading(std::string_view name) {
  if (name == "draining") return draining();
  if (name == "low") return low();
  if (name == "full") return full();
  return std::nullopt;
}

}  // namespace lumowatt
