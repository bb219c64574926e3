#include "render/title.h"

#include <string>

#include "format/figures.h"

namespace lumowatt {

namespace {

Color arrowColor(const Reading& reading, bool colored) {
  if (!colored) return SystemColor::label;
  return trendAccent(reading).value_or(SystemColor::secondaryLabel);
}

/// Returns the extras as text; empty if there are none to show.
std::string extrasText(const Reading& reading, TitleExtras extras) {
  std::string text;
  if (extras.power) text = watts(reading.batteryWatts, true);
  if (extras.time && reading.minutes) {
    if (!text.empty()) text += " · ";
    text += clock(*reading.minutes);
  }
  return text;
}

/// Returns a run that begins with a space, which separates it from what precedes it.
TextRun run(std::string_view text, Font font) {
  std::string spaced = " ";
  return {.text = spaced.append(text), .font = font};
}

}  // namespace

AttributedString titleText(const Reading& reading, TitleExtras extras, bool colored) {
  const Font digits = monospacedDigitFont(12.0);
  TextRun trendArrow = run(arrow(trend(reading)), systemFont(8.0));
  trendArrow.color = arrowColor(reading, colored);
  trendArrow.baselineOffset = 1.5;

  AttributedString result{run(std::to_string(reading.percent) + "%", digits), trendArrow};
  const std::string text = extrasText(reading, extras);
  if (!text.empty()) result.push_back(run(text, digits));
  return result;
}

}  // namespace lumowatt
