#include "format/details.h"

#include "base/number.h"
#include "format/figures.h"

namespace lumowatt {

namespace {

using Lines = std::vector<std::string>;

std::string percentOf(std::int64_t part, std::int64_t whole) {
  return fixed(static_cast<double>(part) / static_cast<double>(whole) * 100.0, 0) + "%";
}

void addCharge(Lines& lines, const Reading& reading) {
  lines.push_back("Charge: " + std::to_string(reading.percent) + "% (" +
                  std::to_string(reading.rawCurrent) + " of " + std::to_string(reading.rawMax) +
                  " mAh)");
  if (reading.charging) {
    lines.push_back("Time to full: " + duration(reading.minutes));
  } else if (!reading.external) {
    lines.push_back("Time to empty: " + duration(reading.minutes));
  }
}

void addPower(Lines& lines, const Reading& reading) {
  lines.push_back("Battery power: " + watts(reading.batteryWatts, true) + "  (" +
                  fixed(reading.batteryVolts, 2) + " V, " + fixedWithSign(reading.batteryAmps, 3) +
                  " A)");
  if (const auto rate = percentPerHour(reading)) {
    lines.push_back("Rate now: " + std::string(sign(*rate)) + magnitude(*rate, 1) + "% per hour");
  }
  lines.push_back("System use: " + watts(reading.systemWatts, false));
}

void addAdapter(Lines& lines, const Reading& reading) {
  if (!reading.external) return;
  lines.push_back("From the adapter: " + watts(reading.wallWatts, false) + "  (" +
                  fixed(reading.wallVolts, 1) + " V, " + fixed(reading.wallAmps, 2) + " A)");
  if (reading.adapterWatts >= 1) {
    lines.push_back("Adapter rating: " + std::to_string(reading.adapterWatts) + " W");
  }
}

void addHealth(Lines& lines, const Reading& reading) {
  if (reading.design >= 1) {
    lines.push_back("Capacity vs design, raw: " + percentOf(reading.rawMax, reading.design) + " (" +
                    std::to_string(reading.rawMax) + " of " + std::to_string(reading.design) +
                    " mAh)");
    if (reading.nominal >= 1) {
      lines.push_back("Nominal charge capacity: " + std::to_string(reading.nominal) + " mAh (" +
                      percentOf(reading.nominal, reading.design) + ")");
    }
    lines.push_back("Apple’s own health figure uses its own method and can differ.");
  }
  lines.push_back("Cycle count: " + std::to_string(reading.cycles));
  if (reading.temperatureC) {
    lines.push_back("Temperature: " + fixed(*reading.temperatureC, 1) + " °C");
  }
}

}  // namespace

std::vector<std::string> details(const Reading& reading) {
  Lines lines = {statusLine(reading)};
  addCharge(lines, reading);
  addPower(lines, reading);
  addAdapter(lines, reading);
  addHealth(lines, reading);
  return lines;
}

}  // namespace lumowatt
