/// Fuzz target: a property dictionary, read and formatted as text. Each line of the input is one
/// of:
///
///     Voltage=12000              a number
///     Voltage="30W               a text, without a closing quote
///     Voltage=                   a value of a type that `read` ignores
///     AdapterDetails/Name="30W   a value in a nested dictionary
///     reading.batteryWatts=nan   sets a field of the reading
///     +60=55                     adds a sample of 55 %, 60 seconds after the preceding sample
///     icon                       also draws an icon, which is slower than all other checks

#include <charconv>
#include <cmath>
#include <limits>

#include "artwork/tile_icon.h"
#include "base/fatal.h"
#include "menubar/preferences.h"
#include "reading_rules.h"
#include "render/block_chart.h"
#include "render/sparkline.h"
#include "render/tiles.h"
#include "support.h"
#include "telemetry/read.h"

namespace lumowatt {

namespace {

/// Exception that replaces the exit of the process.
struct FatalError {};

}  // namespace

// Replaces the function of the library, which exits the process: the linker uses this definition.
void fatal(std::string_view, std::string_view) { throw FatalError(); }

namespace fuzz {

namespace {

/// Field of a reading that an input can set.
struct Field {
  std::string_view name;
  double Reading::*field;
};

constexpr Field fields[] = {
    {"batteryVolts", &Reading::batteryVolts}, {"batteryAmps", &Reading::batteryAmps},
    {"wallVolts", &Reading::wallVolts},       {"wallAmps", &Reading::wallAmps},
    {"wallWatts", &Reading::wallWatts},       {"systemWatts", &Reading::systemWatts},
    {"batteryWatts", &Reading::batteryWatts},
};

/// Parses a text that consists of a number. A number that overflows 64 bits is clamped to
/// their range. Returns nothing for other text.
std::optional<std::int64_t> integer(std::string_view text) {
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc()) return value;
  using Limits = std::numeric_limits<std::int64_t>;
  return text.starts_with('-') ? Limits::min() : Limits::max();
}

PropertyValue propertyValue(std::string_view text) {
  if (text.starts_with('"')) return PropertyValue::text(unescaped(text.substr(1)));
  const auto number = integer(text);
  return number ? PropertyValue::number(*number) : PropertyValue();
}

/// Sets a value in nested dictionaries: the last part of `path` is the key, the preceding parts are
/// the keys of the dictionaries. Creates missing dictionaries.
void setAtPath(PropertyDictionary& properties, std::string_view path, PropertyValue value) {
  const auto [key, rest] = split(path, '/');
  if (key.size() == path.size()) {
    properties.set(key, std::move(value));
    return;
  }
  const PropertyValue* const existing = properties.find(key);
  PropertyDictionary inner;
  if (existing != nullptr && existing->asDictionary() != nullptr) inner = *existing->asDictionary();
  setAtPath(inner, rest, std::move(value));
  properties.set(key, PropertyValue::dictionary(std::move(inner)));
}

/// Parsed input, and the battery service that returns its properties.
struct ParsedInput : BatteryService {
  explicit ParsedInput(std::string_view input) {
    for (const std::string_view line : parts(input, '\n')) {
      const auto [key, value] = split(line, '=');
      if (key.starts_with("reading.")) {
        setField(key.substr(8), value);
      } else if (line == "icon") {
        hasIcon = true;
      } else if (key.starts_with('+')) {
        addSample(integer(key.substr(1)).value_or(0), integer(value).value_or(0));
      } else {
        setAtPath(dictionary, key, propertyValue(value));
      }
    }
  }

  std::optional<PropertyDictionary> properties() override { return dictionary; }

  /// Returns the reading with the fields that the input sets.
  Reading withFields(Reading reading) const {
    for (const auto& [field, value] : fieldValues) reading.*field = value;
    if (temperature) reading.temperatureC = temperature;
    return reading;
  }

  PropertyDictionary dictionary;
  std::vector<std::pair<double Reading::*, double>> fieldValues;
  std::optional<double> temperature;
  std::vector<Sample> history;
  bool hasIcon = false;

 private:
  void setField(std::string_view name, std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (name == "temperatureC") temperature = value;
    for (const Field& field : fields) {
      if (field.name == name) fieldValues.emplace_back(field.field, value);
    }
  }

  /// Appends a sample, `delay` seconds after the last sample. Stores at most 1000 samples, which is
  /// more than the program stores in an hour.
  void addSample(std::int64_t delay, std::int64_t percent) {
    const double before = history.empty() ? 0 : history.back().time;
    const double time = before + static_cast<double>(delay > 0 ? delay : 0);
    if (history.size() < 1000) history.push_back({time, percent});
  }
};

double number(const PropertyDictionary& properties, std::string_view key) {
  return static_cast<double>(signedNumber(properties.find(key)).value_or(0));
}

/// Reads the battery. Returns nothing if `read` calls `fatal`, which is permitted only if the
/// percentage overflows 64 bits.
std::optional<Reading> tryToRead(ParsedInput& input) {
  try {
    auto reading = read(input);
    require(reading.has_value(), "properties without a reading");
    return reading;
  } catch (const FatalError&) {
    const PropertyValue* const inner = input.dictionary.find("BatteryData");
    const auto capacity = [&](std::string_view key) {
      const bool isNested = inner != nullptr && inner->asDictionary() != nullptr &&
                            signedNumber(inner->asDictionary()->find(key));
      return number(isNested ? *inner->asDictionary() : input.dictionary, key);
    };
    const double percent =
        capacity("AppleRawCurrentCapacity") / capacity("AppleRawMaxCapacity") * 100;
    require(number(input.dictionary, "MaxCapacity") != 100,
            "a fatal error though the percentage is given");
    require(!(std::fabs(percent) < 0x1p63), "a fatal error for a percentage within range");
    return std::nullopt;
  }
}

void requireRead(const PropertyDictionary& properties, const Reading& reading) {
  const bool isKnown = signedNumber(properties.find("CycleCount")).has_value();
  require(isKnown || reading.cycles == 0, "a cycle count that is not in the properties");
  require(reading.batteryAmps == number(properties, "Amperage") / 1000,
          "another current than in the properties");
  require(!(reading.batteryAmps < 0 && reading.batteryWatts > 0),
          "current and power of opposite signs");
  require(!reading.minutes || (*reading.minutes >= 1 && *reading.minutes < 65535),
          "minutes out of range");
  require(reading.external == (number(properties, "ExternalConnected") != 0),
          "wrong external power");
  for (const Field& field : fields) {
    require(std::isfinite(reading.*field.field), "a value that is not finite", field.name);
  }
}

void requireChart(const std::vector<Sample>& history) {
  const std::string chart = blockChart(history);
  require(chart == blockChart(history), "two different charts of one history", chart);
  if (history.size() < 2 || history.front().time == history.back().time) {
    require(chart == collectingHistory, "a chart of samples that span no time", chart);
    return;
  }
  std::string_view rest = chart;
  for (int column = 0; column < 30; ++column) {
    require(rest.starts_with("▁") || (rest >= "▁" && rest < "▉"), "a character that is not a block",
            rest);
    rest.remove_prefix(std::string_view("▁").size());
  }
  require(rest.starts_with(' ') && rest.ends_with('%'), "a chart without its range", rest);
  require(!hasControlCharacter(chart), "a control character in a chart", chart);
}

/// Requires that the title's icon is a complete SVG without invalid numbers.
void requireIcon(const Reading& reading) {
  const std::string icon = artwork::tileIcon(tiles(reading, titleExtras(Mode::all), true).back());
  require(icon.starts_with("<svg") && icon.find("</svg>") != std::string::npos,
          "an incomplete icon", icon);
  for (const char* word : {"nan", "inf"}) {
    require(icon.find(word) == std::string::npos, "an invalid number in an icon", icon);
  }
}

}  // namespace

void tryInput(std::string_view input) {
  ParsedInput parsed(input);
  requireChart(parsed.history);
  const auto reading = tryToRead(parsed);
  if (!reading) return;
  requireRead(parsed.dictionary, *reading);
  const Reading changed = parsed.withFields(*reading);
  requireText(changed);
  if (parsed.hasIcon) requireIcon(changed);
}

}  // namespace fuzz
}  // namespace lumowatt
