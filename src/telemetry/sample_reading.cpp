#include "telemetry/sample_reading.h"

namespace lumowatt {

namespace {

/// Returns a reading with the values that all samples share. The adapter is set even on battery
/// power, because a battery service remembers the last connected adapter.
Reading commonReading() {
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

Reading onBattery(std::int64_t percent, std::int64_t charge, double amps, std::int64_t minutes,
                  double watts) {
  Reading reading = commonReading();
  reading.percent = percent;
  reading.rawCurrent = charge;
  reading.batteryAmps = amps;
  reading.minutes = minutes;
  reading.systemWatts = watts;
  reading.batteryWatts = -watts;
  return reading;
}

Reading full() {
  Reading reading = commonReading();
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
  if (name == "draining") return onBattery(64, 2463, -0.95, 228, 11.0);
  if (name == "low") return onBattery(16, 616, -0.62, 96, 7.2);
  if (name == "full") return full();
  return std::nullopt;
}

}  // namespace lumowatt
