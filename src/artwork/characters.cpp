#include "artwork/characters.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "artwork/rounded_polygon.h"
#include "artwork/stroke_outline.h"

namespace lumowatt::artwork {

namespace {

/// A point of a line in a character. Coordinates are fractions of the character's box, inset by
/// half the thickness of lines: the outer edge of a line at x = 0 is the left side of the box, and
/// the outer edge of a line at x = 1 is the right side. y = 0 is the top and y = 1 is the bottom.
/// The rounding is a fraction of the inset width.
struct Bend {
  double x = 0.0;
  double y = 0.0;
  double rounding = 0.0;
};

enum class Kind {
  line,
  loop,  ///< a closed line
  dot,   ///< a square whose side is the thickness of lines
  area,
};

struct Figure {
  Kind kind = Kind::line;
  std::span<const Bend> bends = {};
};

/// Unit of the width of a character.
enum class Measure {
  digitWidth,
  height,  ///< for shapes that must not narrow along with the digits
};

struct Character {
  std::string_view text;
  double width;                   ///< in units of `measure`
  std::array<Figure, 3> figures;  ///< unused entries are empty
  double weight = 1.0;            ///< relative to the weight of the lettering
  Measure measure = Measure::digitWidth;

  double widthIn(const Lettering& lettering) const {
    return width * (measure == Measure::height ? lettering.height : lettering.width);
  }
};

constexpr double roundest = 0.5;  // the largest rounding: a semicircle across the whole width

constexpr Bend zero[] = {{0, 0, roundest}, {1, 0, roundest}, {1, 1, roundest}, {0, 1, roundest}};
constexpr Bend one[] = {{0.12, 0.2}, {0.66, 0}, {0.66, 1}};
constexpr Bend two[] = {
    {0, 0.22}, {0, 0, roundest}, {1, 0, roundest}, {1, 0.45, 0.3}, {0, 0.9, 0.1}, {0, 1}, {1, 1}};
constexpr Bend threeTop[] = {
    {0, 0.16}, {0, 0, roundest}, {1, 0, roundest}, {1, 0.47, 0.4}, {0.4, 0.47}};
constexpr Bend threeBottom[] = {
    {0.4, 0.47}, {1, 0.47, roundest}, {1, 1, roundest}, {0, 1, roundest}, {0, 0.84}};
constexpr Bend fourHook[] = {{0.42, 0.03}, {0, 0.78, 0.12}, {1, 0.78}};
constexpr Bend fourStem[] = {{0.8, 0.48}, {0.8, 1}};
constexpr Bend five[] = {{0.95, 0},        {0.08, 0},        {0, 0.42}, {1, 0.42, roundest},
                         {1, 1, roundest}, {0, 1, roundest}, {0, 0.84}};
constexpr Bend sixBowl[] = {
    {0, 0.45, roundest}, {1, 0.45, roundest}, {1, 1, roundest}, {0, 1, roundest}};
constexpr Bend sixStem[] = {{0, 0.7}, {0, 0, roundest}, {1, 0, roundest}, {1, 0.1}};
constexpr Bend seven[] = {{0, 0}, {1, 0, 0.1}, {0.3, 0.97}};
constexpr Bend eightTop[] = {
    {0, 0, roundest}, {1, 0, roundest}, {1, 0.47, roundest}, {0, 0.47, roundest}};
constexpr Bend eightBottom[] = {
    {0, 0.47, roundest}, {1, 0.47, roundest}, {1, 1, roundest}, {0, 1, roundest}};
constexpr Bend nineBowl[] = {
    {0, 0, roundest}, {1, 0, roundest}, {1, 0.55, roundest}, {0, 0.55, roundest}};
constexpr Bend nineStem[] = {{0, 0.9}, {0, 1, roundest}, {1, 1, roundest}, {1, 0.3}};

constexpr Bend slash[] = {{0.8, 0.03}, {0.2, 0.97}};
constexpr Bend upperRing[] = {{0, 0, 0.18}, {0.36, 0, 0.18}, {0.36, 0.38, 0.18}, {0, 0.38, 0.18}};
constexpr Bend lowerRing[] = {{0.64, 0.62, 0.18}, {1, 0.62, 0.18}, {1, 1, 0.18}, {0.64, 1, 0.18}};

constexpr Bend bar[] = {{0, 0.53}, {1, 0.53}};
constexpr Bend post[] = {{0.5, 0.29}, {0.5, 0.75}};
constexpr Bend decimalPoint[] = {{0.5, 1}};
constexpr Bend upperPoint[] = {{0.5, 0.22}};
constexpr Bend lowerPoint[] = {{0.5, 0.88}};
constexpr Bend middlePoint[] = {{0.5, 0.52}};
constexpr Bend zigzag[] = {{0, 0}, {0.25, 0.9}, {0.5, 0.2}, {0.75, 0.9}, {1, 0}};

constexpr Bend upward[] = {{0.5, 0.2}, {1, 0.8}, {0, 0.8}};
constexpr Bend downward[] = {{0, 0.2}, {1, 0.2}, {0.5, 0.8}};
constexpr Bend disc[] = {
    {0.1875, 0.25, 0.3125}, {0.8125, 0.25, 0.3125}, {0.8125, 0.75, 0.3125}, {0.1875, 0.75, 0.3125}};

constexpr double xHeight = 0.3;  // top of lowercase letters
constexpr Bend diagonal[] = {{0.05, 0.06}, {0.95, 0.94}};
constexpr Bend highRightStem[] = {{1, 0}, {1, 1}};
constexpr Bend bowl[] = {
    {0, xHeight, roundest}, {1, xHeight, roundest}, {1, 1, roundest}, {0, 1, roundest}};
constexpr Bend leftStem[] = {{0, 0}, {0, 1}};
constexpr Bend rightStem[] = {{1, xHeight}, {1, 1}};
constexpr Bend lowStem[] = {{0, xHeight}, {0, 1}};
constexpr Bend arm[] = {{0, 0.65}, {0, xHeight, roundest}, {1, xHeight}};
constexpr Bend crossedStem[] = {{0.35, 0.08}, {0.35, 1, 0.4}, {1, 1}};
constexpr Bend crossbar[] = {{0, xHeight}, {1, xHeight}};
constexpr Bend hook[] = {
    {0, 0.65},        {1, 0.65},    {1, xHeight, roundest}, {0, xHeight, roundest},
    {0, 1, roundest}, {0.9, 1, 0.2}};
constexpr Bend leftArm[] = {{0, xHeight}, {0.5, 0.96}};
constexpr Bend tail[] = {{1, xHeight}, {0.35, 1.3}};

constexpr double pointWidth = 0.4;
constexpr double colonWidth = 0.6;
constexpr double signWidth = 0.8;
constexpr double arrowWidth = 0.8;

constexpr std::array<Character, 30> characters{{
    {"0", 1.0, {{{Kind::loop, zero}}}},
    {"1", 1.0, {{{Kind::line, one}}}},
    {"2", 1.0, {{{Kind::line, two}}}},
    {"3", 1.0, {{{Kind::line, threeTop}, {Kind::line, threeBottom}}}},
    {"4", 1.0, {{{Kind::line, fourHook}, {Kind::line, fourStem}}}},
    {"5", 1.0, {{{Kind::line, five}}}},
    {"6", 1.0, {{{Kind::loop, sixBowl}, {Kind::line, sixStem}}}},
    {"7", 1.0, {{{Kind::line, seven}}}},
    {"8", 1.0, {{{Kind::loop, eightTop}, {Kind::loop, eightBottom}}}},
    {"9", 1.0, {{{Kind::loop, nineBowl}, {Kind::line, nineStem}}}},
    {"%", 1.6, {{{Kind::line, slash}, {Kind::loop, upperRing}, {Kind::loop, lowerRing}}}, 0.7},
    {"−", signWidth, {{{Kind::line, bar}}}},
    {"-", signWidth, {{{Kind::line, bar}}}},
    {"+", signWidth, {{{Kind::line, bar}, {Kind::line, post}}}},
    {".", pointWidth, {{{Kind::dot, decimalPoint}}}},
    {"·", pointWidth, {{{Kind::dot, middlePoint}}}},
    {" ", pointWidth, {}},
    {":", colonWidth, {{{Kind::dot, upperPoint}, {Kind::dot, lowerPoint}}}},
    {"W", 1.6, {{{Kind::line, zigzag}}}},
    {"N", 1.1, {{{Kind::line, leftStem}, {Kind::line, diagonal}, {Kind::line, highRightStem}}}},
    {"a", 0.9, {{{Kind::loop, bowl}, {Kind::line, rightStem}}}},
    {"b", 0.9, {{{Kind::loop, bowl}, {Kind::line, leftStem}}}},
    {"e", 0.9, {{{Kind::line, hook}}}},
    {"o", 0.9, {{{Kind::loop, bowl}}}},
    {"r", 0.65, {{{Kind::line, lowStem}, {Kind::line, arm}}}},
    {"t", 0.75, {{{Kind::line, crossedStem}, {Kind::line, crossbar}}}},
    {"y", 1.0, {{{Kind::line, leftArm}, {Kind::line, tail}}}},
    {"▲", arrowWidth, {{{Kind::area, upward}}}, 1.0, Measure::height},
    {"▼", arrowWidth, {{{Kind::area, downward}}}, 1.0, Measure::height},
    {"•", arrowWidth, {{{Kind::area, disc}}}, 1.0, Measure::height},
}};

/// Converts the figures of a character to paths. The left side of the character is at `x`.
struct FigureWriter {
  const Character& character;
  const Lettering& lettering;
  double x;

  Path path(const Figure& figure) const {
    const double weight = lettering.weight * character.weight;
    // A line covers half its thickness on either side of its center.
    const double margin = figure.kind == Kind::area ? 0.0 : weight / 2.0;
    const double across = character.widthIn(lettering) - 2 * margin;
    const double down = lettering.height - 2 * margin;
    std::vector<Corner> corners;
    corners.reserve(figure.bends.size());
    for (const Bend& bend : figure.bends) {
      corners.push_back(
          {{x + margin + bend.x * across, margin + bend.y * down}, bend.rounding * across});
    }
    switch (figure.kind) {
      case Kind::line:
        return strokeOutline(corners, false, weight);
      case Kind::loop:
        return strokeOutline(corners, true, weight);
      case Kind::dot:
        return square(corners[0].at, margin);
      case Kind::area:
        break;
    }
    return roundedPolygon(corners);
  }

  static Path square(Point center, double half) {
    const auto [x, y] = center;
    return roundedPolygon({{{x - half, y - half}},
                           {{x + half, y - half}},
                           {{x + half, y + half}},
                           {{x - half, y + half}}});
  }
};

}  // namespace

std::optional<TextOutline> outline(std::string_view text, const Lettering& lettering) {
  TextOutline result{};
  while (!text.empty()) {
    const auto* const character = std::ranges::find_if(
        characters, [&](const Character& known) { return text.starts_with(known.text); });
    if (character == characters.end()) return std::nullopt;
    if (result.width > 0.0) result.width += lettering.gap;
    for (const Figure& figure : character->figures) {
      if (figure.bends.empty()) continue;
      const Path path = FigureWriter{*character, lettering, result.width}.path(figure);
      result.area.insert(result.area.end(), path.begin(), path.end());
    }
    result.width += character->widthIn(lettering);
    text.remove_prefix(character->text.size());
  }
  return result;
}

}  // namespace lumowatt::artwork
