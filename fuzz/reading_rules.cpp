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

enum class Kind { integer, truth, trend, minutes, milli, rate, name, temperature };

struct Line {
  std::string_view key;
  Kind kind;
};

// As the README has them.
constexpr Line lines[] = {
    {"percent", Kind::integer},
    {"trend", Kind::trend},
    {"charging", Kind::truth},
    {"external", Kind::truth},
    {"full", Kind::truth},
    {"minutes", Kind::minutes},
    {"rawCurrentmAh", Kind::integer},
    {"rawMaxmAh", Kind::integer},
    {"designmAh", Kind::integer},
    {"nominalmAh", Kind::integer},
    {"cycles", Kind::integer},
    {"batteryVolts", Kind::milli},
    {"batteryAmps", Kind::milli},
    {"batteryWatts", Kind::milli},
    {"percentPerHour", Kind::rate},
    {"systemWatts", Kind::milli},
    {"wallWatts", Kind::milli},
    {"wallVolts", Kind::milli},
    {"wallAmps", Kind::milli},
    {"adapterWatts", Kind::integer},
    {"adapterName", Kind::name},
    {"temperatureC", Kind::temperature},
};

constexpr int anyDecimals = -1;

/// Whether `text` is digits after an optional sign, with as many `decimals` behind a point.
bool isDecimal(std::string_view text, int decimals) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const auto isDigits = [](std::string_view digits) {
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
  };
  if (decimals == 0) return isDigits(text);
  const auto [whole, fraction] = split(text, '.');
  const bool asMany = decimals == anyDecimals || fraction.size() == std::size_t(decimals);
  return isDigits(whole) && isDigits(fraction) && asMany;
}

bool isNoNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return text == "nan" || text == "inf";
}

bool isOfKind(std::string_view text, Kind kind) {
  switch (kind) {
    case Kind::integer:
      return isDecimal(text, 0);
    case Kind::truth:
      return text == "true" || text == "false";
    case Kind::trend:
      return text == "up" || text == "down" || text == "steady";
    case Kind::minutes:
      return text == "unknown" || isDecimal(text, 0);
    case Kind::milli:
      return isDecimal(text, 3) || isNoNumber(text);
    case Kind::rate:
      return text == "unknown" || isDecimal(text, 2) || isNoNumber(text);
    case Kind::name:
      return true;
    case Kind::temperature:
      return text == "unavailable" || isDecimal(text, anyDecimals) || isNoNumber(text);
  }
  return false;
}

/// Requires that `text` reads back as `value`, but for what its decimals leave out.
void requireNear(std::string_view text, double value, double unit) {
  double back = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), back).ptr;
  require(end == text.data() + text.size(), "a number cannot be read", text);
  if (!std::isfinite(value)) {
    require(std::isnan(value) ? std::isnan(back) : back == value, "not the value", text);
    return;
  }
  const double slack = unit * 0.5000001 + std::fabs(value) * 1e-15;
  require(std::fabs(back - value) <= slack, "a number is another", text);
}

/// The dump has the name as it is; only what comes before and after it are lines for sure.
void requireDump(const Reading& reading) {
  const std::string text = dump(reading);
  require(text == dump(reading), "a dump differs from the one before", text);
  std::string_view rest = text;
  for (const auto& [key, kind] : lines) {
    const std::string start = std::string(key) + "=";
    require(rest.starts_with(start), "not the next key", rest);
    rest.remove_prefix(start.size());
    const std::size_t length =
        kind == Kind::name ? reading.adapterName.size() : std::min(rest.find('\n'), rest.size());
    const std::string_view value = rest.substr(0, length);
    require(isOfKind(value, kind), key, value);
    if (kind == Kind::name) require(value == reading.adapterName, "another name", value);
    if (key == "percent") require(value == std::to_string(reading.percent), key, value);
    if (key == "batteryVolts") requireNear(value, reading.batteryVolts, 1e-3);
    if (key == "batteryAmps") requireNear(value, reading.batteryAmps, 1e-3);
    if (key == "batteryWatts") requireNear(value, reading.batteryWatts, 1e-3);
    if (key == "systemWatts") requireNear(value, reading.systemWatts, 1e-3);
    if (key == "wallAmps") requireNear(value, reading.wallAmps, 1e-3);
    if (key == "percentPerHour" && value != "unknown") {
      require(value.starts_with('-') == std::signbit(reading.batteryAmps), "a rate's sign", value);
    }
    if (reading.temperatureC && key == "temperatureC") requireNear(value, *reading.temperatureC, 0);
    require(rest.substr(length).starts_with('\n'), "a line does not end", rest);
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
  require(trend(reading) == expected, "a trend", name(trend(reading)));
}

void requireDetails(const Reading& reading) {
  const std::vector<std::string> report = details(reading);
  require(report == details(reading), "a report differs from the one before");
  require(report.size() >= 6 && report.size() <= 13, "a report of another length");
  require(report.front() == statusLine(reading), "the first line is the status", report.front());
  const bool isPlain = !hasControlCharacter(reading.adapterName);
  for (const std::string& line : report) {
    require(!line.empty(), "an empty line in the report");
    require(!isPlain || !hasControlCharacter(line), "a line of the report is not one", line);
    const bool isRate = line.starts_with("Rate now:");
    require(!isRate || percentPerHour(reading).has_value(), "a rate where there is none", line);
  }
}

void requireTitle(const Reading& reading, Mode mode, bool colored) {
  const TitleExtras extras = titleExtras(mode);
  const std::string percent = " " + std::to_string(reading.percent) + "%";
  const AttributedString text = titleText(reading, extras, colored);
  require(text == titleText(reading, extras, colored), "a title differs from the one before");
  const bool hasFigures = extras.power || (extras.time && reading.minutes);
  require(text.size() == (hasFigures ? 3U : 2U), "the runs of a title");
  require(text.front().text == percent, "a title's percentage", text.front().text);
  for (const TextRun& run : text) {
    require(run.text.starts_with(' ') && !hasControlCharacter(run.text), "a run", run.text);
  }

  const std::vector<Tile> icons = tiles(reading, extras, colored);
  require(icons == tiles(reading, extras, colored), "tiles differ from those before");
  require(icons.size() == (mode == Mode::all ? 2U : 1U), "as many tiles as the mode has");
  const bool isTimeKnown = reading.minutes.has_value();
  require(mode != Mode::all || (icons.back().size() == 2) == isTimeKnown, "a tile's time");
  const TileRow& percentRow = icons.front().front();
  const std::string shown = percentRow.text + (percentRow.mark ? "%" : "");
  require(shown == percent.substr(1), "a tile's percentage", shown);
  for (const Tile& tile : icons) {
    require(!tile.empty() && tile.size() <= 2, "the rows of a tile");
    for (const TileRow& row : tile) {
      require(!row.text.empty() && !hasControlCharacter(row.text), "a tile's row", row.text);
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
