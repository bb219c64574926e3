/// A property dictionary, read and told as text. A line is a property: `Voltage=12000` a number,
/// `AdapterDetails/Name="30W` text in a dictionary, and any other value something that is not read.
/// `reading.batteryWatts=nan` puts a figure into the reading itself, and `+60=55` is a sample of
/// the history, 60 seconds after the one before. `icon` has an icon drawn, which takes longer than
/// all the rest.

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

/// The end of the process, as the fuzz target has it: an exception.
struct Ended {};

}  // namespace

// In the place of the one that ends the process, which the linker then leaves in its library.
void fatal(std::string_view, std::string_view) { throw Ended(); }

namespace fuzz {

namespace {

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

/// The number that is all of a text; one beyond 64 bits is the last of them.
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

/// Puts the value under the last part of `path`, in the dictionaries that the others name.
void put(PropertyDictionary& properties, std::string_view path, PropertyValue value) {
  const auto [key, rest] = split(path, '/');
  if (key.size() == path.size()) {
    properties.set(key, std::move(value));
    return;
  }
  const PropertyValue* const there = properties.find(key);
  PropertyDictionary inner;
  if (there != nullptr && there->asDictionary() != nullptr) inner = *there->asDictionary();
  put(inner, rest, std::move(value));
  properties.set(key, PropertyValue::dictionary(std::move(inner)));
}

/// An input.
struct Story : BatteryService {
  explicit Story(std::string_view input) {
    for (const std::string_view line : parts(input, '\n')) {
      const auto [key, value] = split(line, '=');
      if (key.starts_with("reading.")) {
        setFigure(key.substr(8), value);
      } else if (line == "icon") {
        hasIcon = true;
      } else if (key.starts_with('+')) {
        addSample(integer(key.substr(1)).value_or(0), integer(value).value_or(0));
      } else {
        put(given, key, propertyValue(value));
      }
    }
  }

  std::optional<PropertyDictionary> properties() override { return given; }

  /// The reading, with the figures that the input has for it.
  Reading changed(Reading reading) const {
    for (const auto& [field, value] : figures) reading.*field = value;
    if (temperature) reading.temperatureC = temperature;
    return reading;
  }

  PropertyDictionary given;
  std::vector<std::pair<double Reading::*, double>> figures;
  std::optional<double> temperature;
  std::vector<Sample> history;
  bool hasIcon = false;

 private:
  void setFigure(std::string_view name, std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (name == "temperatureC") temperature = value;
    for (const Field& field : fields) {
      if (field.name == name) figures.emplace_back(field.field, value);
    }
  }

  /// The history is told with the oldest first, and an hour has few of them.
  void addSample(std::int64_t later, std::int64_t percent) {
    const double before = history.empty() ? 0 : history.back().time;
    const double time = before + static_cast<double>(later > 0 ? later : 0);
    if (history.size() < 1000) history.push_back({time, percent});
  }
};

double number(const PropertyDictionary& properties, std::string_view key) {
  return static_cast<double>(signedNumber(properties.find(key)).value_or(0));
}

/// The reading; absent where it ends the process, which it may for one reason alone.
std::optional<Reading> tryToRead(Story& story) {
  try {
    auto reading = read(story);
    require(reading.has_value(), "properties without a reading");
    return reading;
  } catch (const Ended&) {
    const PropertyValue* const inner = story.given.find("BatteryData");
    const auto capacity = [&](std::string_view key) {
      const bool newer = inner != nullptr && inner->asDictionary() != nullptr &&
                         signedNumber(inner->asDictionary()->find(key));
      return number(newer ? *inner->asDictionary() : story.given, key);
    };
    const double percent =
        capacity("AppleRawCurrentCapacity") / capacity("AppleRawMaxCapacity") * 100;
    require(number(story.given, "MaxCapacity") != 100, "ended though the percentage is given");
    require(!(std::fabs(percent) < 0x1p63), "ended for what can be represented");
    return std::nullopt;
  }
}

void requireRead(const PropertyDictionary& properties, const Reading& reading) {
  const bool isKnown = signedNumber(properties.find("CycleCount")).has_value();
  require(isKnown || reading.cycles == 0, "a figure from nowhere");
  require(reading.batteryAmps == number(properties, "Amperage") / 1000, "another current");
  require(!(reading.batteryAmps < 0 && reading.batteryWatts > 0), "power in while current is out");
  require(!reading.minutes || (*reading.minutes >= 1 && *reading.minutes < 65535), "minutes");
  require(reading.external == (number(properties, "ExternalConnected") != 0), "external power");
  for (const Field& field : fields) {
    require(std::isfinite(reading.*field.field), "a figure that is none", field.name);
  }
}

void requireChart(const std::vector<Sample>& history) {
  const std::string chart = blockChart(history);
  require(chart == blockChart(history), "a chart differs from the one before", chart);
  if (history.size() < 2 || history.front().time == history.back().time) {
    require(chart == collectingHistory, "a chart of no time", chart);
    return;
  }
  std::string_view rest = chart;
  for (int column = 0; column < 30; ++column) {
    require(rest.starts_with("▁") || (rest >= "▁" && rest < "▉"), "a chart's block", rest);
    rest.remove_prefix(std::string_view("▁").size());
  }
  require(rest.starts_with(' ') && rest.ends_with('%'), "a chart's range", rest);
  require(!hasControlCharacter(chart), "a chart is one line", chart);
}

/// Requires an icon of the title that can be drawn.
void requireIcon(const Reading& reading) {
  const std::string icon = artwork::tileIcon(tiles(reading, titleExtras(Mode::all), true).back());
  require(icon.starts_with("<svg") && icon.find("</svg>") != std::string::npos, "an icon", icon);
  for (const char* word : {"nan", "inf"}) {
    require(icon.find(word) == std::string::npos, "an icon with what is no number", icon);
  }
}

}  // namespace

void tryInput(std::string_view input) {
  Story story(input);
  requireChart(story.history);
  const auto reading = tryToRead(story);
  if (!reading) return;
  requireRead(story.given, *reading);
  const Reading changed = story.changed(*reading);
  requireText(changed);
  if (story.hasIcon) requireIcon(changed);
}

}  // namespace fuzz
}  // namespace lumowatt
