#include "artwork/svg.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <variant>

#include "artwork/battery.h"
#include "base/rounding.h"

namespace lumowatt::artwork {

namespace {

/// Appends each segment of a path to SVG path data.
struct PathWriter {
  std::string& data;

  void operator()(const MoveTo& move) const { command('M', {move.to}); }
  void operator()(const LineTo& line) const { command('L', {line.to}); }
  void operator()(const CurveTo& curve) const {
    command('C', {curve.control1, curve.control2, curve.to});
  }
  void operator()(const ClosePath&) const { command('Z', {}); }

  void command(char letter, std::initializer_list<Point> points) const {
    data += letter;
    for (const Point& point : points) {
      if (data.back() != letter) data += ' ';
      data += decimal(point.x) + "," + decimal(point.y);
    }
  }
};

const IconTint* findTint(std::optional<SystemColor> color) {
  const auto* const found = std::ranges::find(iconTints, color, &IconTint::color);
  return found == iconTints.end() ? nullptr : found;
}

const IconInk& findInk(Ink ink) { return *std::ranges::find(iconInks, ink, &IconInk::ink); }

}  // namespace

std::string decimal(double value) {
  constexpr std::int64_t unit = 1000;
  const std::int64_t thousandths = roundedHalfAwayFromZero(value * unit).value_or(0);
  std::string text = thousandths < 0 ? "-" : "";
  text += std::to_string(std::abs(thousandths / unit));
  if (const std::int64_t rest = std::abs(thousandths % unit); rest != 0) {
    text += "." + std::to_string(unit + rest).substr(1);  // with leading zeros
    text.erase(text.find_last_not_of('0') + 1);
  }
  return text;
}

std::string pathData(const Path& path) {
  std::string data;
  for (const auto& element : path) std::visit(PathWriter{data}, element);
  return data;
}

std::string iconName(std::string_view symbol, std::optional<SystemColor> tint, Ink ink) {
  std::string name = "lumowatt-" + std::string(symbol) + "-";
  std::ranges::replace(name, '.', '-');  // a dot may start a file extension
  if (const IconTint* const known = findTint(tint)) return name.append(known->name);
  return name.append(findInk(ink).name);
}

std::string areaElement(const Path& path, std::optional<SystemColor> tint,
                        std::string_view attributes) {
  std::string element = "<path ";
  if (const IconTint* const known = findTint(tint)) {
    const std::string value(known->value);
    element += "fill=\"" + value + "\" style=\"fill:" + value + " !important\" ";
  } else {
    element += R"(class="ColorScheme-Text" fill="currentColor" )";
  }
  return element.append(attributes).append(" d=\"").append(pathData(path)).append("\"/>\n");
}

std::string svg(const Size& size, const std::string& elements, Ink ink, double magnification) {
  const std::string width = decimal(size.width);
  const std::string height = decimal(size.height);
  return R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" +
         decimal(size.width * magnification) + "\" height=\"" +
         decimal(size.height * magnification) + R"(" viewBox="0 0 )" + width + " " + height +
         "\">\n" + R"(<style type="text/css" id="current-color-scheme">.ColorScheme-Text{color:)" +
         std::string(findInk(ink).value) + "}</style>\n" + elements + "</svg>\n";
}

std::string symbolIcon(const Path& path, std::optional<SystemColor> tint, Ink ink) {
  return svg({gridSize, gridSize}, areaElement(path, tint, R"(fill-rule="evenodd")"), ink);
}

}  // namespace lumowatt::artwork
