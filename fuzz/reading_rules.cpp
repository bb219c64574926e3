#include "reading_rules.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "cli/dump.h"
#include "format/details.h"
#include "format/figures.h"
#include "menubar/preferences.h"
#include "render/glyph.h"
#include "render/tiles.h"
#include "support.h"

namespace lumowatt::fuzz {

namespace {

enum class Kind { integer, boolean, trend, minutes, threeDecimals, rate, name, temperature };

struct Line {
  std::string_view key;
  Kind kind;
};

// Lines of the dump, as documented.
constexpr Line lines[] = {
    {"percent", Kind::integer},
    {"trend", Kind::trend},
    {"charging", Kind::boolean},
    {"external", Kind::boolean},
    {"full", Kind::boolean},
    {"minutes", Kind::minutes},
    {"rawCurrentmAh", Kind::integer},
    {"rawMaxmAh", Kind::integer},
    {"designmAh", Kind::integer},
    {"nominalmAh", Kind::integer},
    {"cycles", Kind::integer},
    {"batteryVolts", Kind::threeDecimals},
    {"batteryAmps", Kind::threeDecimals},
    {"batteryWatts", Kind::threeDecimals},
    {"percentPerHour", Kind::rate},
    {"systemWatts", Kind::threeDecimals},
    {"wallWatts", Kind::threeDecimals},
    {"wallVolts", Kind::threeDecimals},
    {"wallAmps", Kind::threeDecimals},
    {"adapterWatts", Kind::integer},
    {"adapterName", Kind::name},
    {"temperatureC", Kind::temperature},
};

constexpr int anyDecimals = -1;

/// Returns whether `text` is a decimal number: an optional minus sign, digits and, unless
/// `decimals` is 0, a point and `decimals` digits (one or more if `decimals` is `anyDecimals`).
bool isDecimal(std::string_view text, int decimals) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const auto isDigits = [](std::string_view digits) {
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
  };
  if (decimals == 0) return isDigits(text);
  const auto [whole, fraction] = split(text, '.');
  const bool hasAllDecimals = decimals == anyDecimals || fraction.size() == std::size_t(decimals);
  return isDigits(whole) && isDigits(fraction) && hasAllDecimals;
}

bool isNonFinite(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return text == "nan" || text == "inf";
}

bool isOfKind(std::string_view text, Kind kind) {
  switch (kind) {
    case Kind::integer:
      return isDecimal(text, 0);
    case Kind::boolean:
      return text == "true" || text == "false";
    case Kind::trend:
      return text == "up" || text == "down" || text == "steady";
    case Kind::minutes:
      return text == "unknown" || isDecimal(text, 0);
    case Kind::threeDecimals:
      return isDecimal(text, 3) || isNonFinite(text);
    case Kind::rate:
      return text == "unknown" || isDecimal(text, 2) || isNonFinite(text);
    case Kind::name:
      return true;
    case Kind::temperature:
      return text == "unavailable" || isDecimal(text, anyDecimals) || isNonFinite(text);
  }
  return false;
}

/// Requires that `text` is `value` rounded to a multiple of `unit`.
void requireNear(std::string_view text, double value, double unit) {
  double parsed = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), parsed).ptr;
  require(end == text.data() + text.size(), "not a number", text);
  if (!std::isfinite(value)) {
    require(std::isnan(value) ? std::isnan(parsed) : parsed == value,
            "another number than the value", text);
    return;
  }
  const double tolerance = unit * 0.5000001 + std::fabs(value) * 1e-15;
  require(std::fabs(parsed - value) <= tolerance, "another number than the value", text);
}

/// Checks the dump. The adapter name may contain line feeds, so its end is found by the length of
/// the name in the reading.
void requireDump(const Reading& reading) {
  const std::string text = dump(reading);
  require(text == dump(reading), "two different dumps of one reading", text);
  std::string_view rest = text;
  for (const auto& [key, kind] : lines) {
    const std::string start = std::string(key) + "=";
    require(rest.starts_with(start), "another key than expected", rest);
    rest.remove_prefix(start.size());
    const std::size_t length =
        kind == Kind::name ? reading.adapterName.size() : std::min(rest.find('\n'), rest.size());
    const std::string_view value = rest.substr(0, length);
    require(isOfKind(value, kind), key, value);
    if (kind == Kind::name) require(value == reading.adapterName, "another adapter name", value);
    if (key == "percent") require(value == std::to_string(reading.percent), key, value);
    if (key == "batteryVolts") requireNear(value, reading.batteryVolts, 1e-3);
    if (key == "batteryAmps") requireNear(value, reading.batteryAmps, 1e-3);
    if (key == "batteryWatts") requireNear(value, reading.batteryWatts, 1e-3);
    if (key == "systemWatts") requireNear(value, reading.systemWatts, 1e-3);
    if (key == "wallAmps") requireNear(value, reading.wallAmps, 1e-3);
    if (key == "percentPerHour" && value != "unknown") {
      require(value.starts_with('-') == std::signbit(reading.batteryAmps),
              "another sign than that of the current", value);
    }
    if (reading.temperatureC && key == "temperatureC") requireNear(value, *reading.temperatureC, 0);
    require(rest.substr(length).starts_with('\n'), "a line without a line feed", rest);
    rest.remove_prefix(length + 1);
  }
  require(rest.empty(), "more than 22 lines", rest);
}

void requireTrend(const Reading& reading) {
  const bool full = reading.external && reading.full;
  const double watts = reading.batteryWatts;
  const Trend expected = full || !(std::fabs(watts) > 0.3) ? Trend::steady
                         : watts > 0                       ? Trend::up
                                                           : Trend::down;
  require(trend(reading) == expected, "a wrong trend", name(trend(reading)));
}

void requireDetails(const Reading& reading) {
  const std::vector<std::string> report = details(reading);
  require(report == details(reading), "two different reports of one reading");
  require(report.size() >= 6 && report.size() <= 13, "not between 6 and 13 lines in the report");
  require(report.front() == statusLine(reading), "a first line other than the status",
          report.front());
  const bool isPlain = !hasControlCharacter(reading.adapterName);
  for (const std::string& line : report) {
    require(!line.empty(), "an empty line in the report");
    require(!isPlain || !hasControlCharacter(line), "a control character in the report", line);
    const bool isRate = line.starts_with("Rate now:");
    require(!isRate || percentPerHour(reading).has_value(), "a rate that is unknown", line);
  }
}

void requireTitle(const Reading& reading, Mode mode, bool colored) {
  const TitleExtras extras = titleExtras(mode);
  const std::string percent = " " + std::to_string(reading.percent) + "%";
  const AttributedString text = titleText(reading, extras, colored);
  require(text == titleText(reading, extras, colored), "two different titles of one reading");
  const bool hasFigures = extras.power || (extras.time && reading.minutes);
  require(text.size() == (hasFigures ? 3U : 2U), "a wrong number of runs in a title");
  require(text.front().text == percent, "a wrong percentage in a title", text.front().text);
  for (const TextRun& run : text) {
    require(run.text.starts_with(' ') && !hasControlCharacter(run.text),
            "a run without a leading space, or with a control character", run.text);
  }

  const std::vector<Tile> icons = tiles(reading, extras, colored);
  require(icons == tiles(reading, extras, colored), "different tiles of one reading");
  require(icons.size() == (mode == Mode::all ? 2U : 1U), "a wrong number of tiles for the mode");
  const bool isTimeKnown = reading.minutes.has_value();
  require(mode != Mode::all || (icons.back().size() == 2) == isTimeKnown,
          "a tile without a known time, or with an unknown time");
  const TileRow& percentRow = icons.front().front();
  const std::string shown = percentRow.text + (percentRow.mark ? "%" : "");
  require(shown == percent.substr(1), "a wrong percentage on a tile", shown);
  for (const Tile& tile : icons) {
    require(!tile.empty() && tile.size() <= 2, "a wrong number of rows on a tile");
    for (const TileRow& row : tile) {
      require(!row.text.empty() && !hasControlCharacter(row.text),
              "an empty row on a tile, or a control character", row.text);
    }
  }
}

}  // namespace

void requireText(const Reading& reading) {
  requireDump(reading);
  requireTrend(reading);
  requireDetails(reading);
  for (const Mode mode : allModes) {
    for (const bool colored : {false, true}) requireTitle(reading, mode, colored);
  }
  const auto glyph = tinted(levelSymbol(reading.percent), accent(reading), "");
  require(glyph.has_value(), "a level without a symbol", levelSymbol(reading.percent));
}

}  // namespace lumowatt::fuzz
