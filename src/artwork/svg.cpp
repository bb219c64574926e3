#include "artwork/svg.h"

#include <algorithm>
#include <initializer_list>
#include <variant>

#include "artwork/battery.h"
#include "format/number.h"

namespace lumowatt::artwork {

namespace {

/// Writes each movement as a command of SVG's path data.
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
      data += fixed(point.x, 3) + "," + fixed(point.y, 3);
    }
  }
};

const IconTint* find(std::optional<SystemColor> color) {
  const auto found = std::ranges::find(iconTints, color, &IconTint::color);
  return found == iconTints.end() ? nullptr : &*found;
}

}  // namespace

std::string pathData(const Path& path) {
  std::string data;
  for (const auto& element : path) std::visit(PathWriter{data}, element);
  return data;
}

std::string iconName(std::string_view symbol, std::optional<SystemColor> tint) {
  std::string name = "lumowatt-" + std::string(symbol) + "-";
  std::ranges::replace(name, '.', '-');  // what follows a dot may be taken for a file's type
  const IconTint* const known = find(tint);
  return name.append(known != nullptr ? known->name : "symbolic");
}

std::string svg(const Path& area, std::optional<SystemColor> tint) {
  const std::string side = fixed(gridSize, 0);
  std::string style;
  std::string fill = R"(class="ColorScheme-Text" fill="currentColor")";
  if (const IconTint* const known = find(tint)) {
    fill = "fill=\"" + std::string(known->value) + "\"";
  } else {
    style = R"(<style type="text/css" id="current-color-scheme">)"
            ".ColorScheme-Text{color:#909090}</style>\n";
  }
  return R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + side + R"(" height=")" + side +
         R"(" viewBox="0 0 )" + side + " " + side + "\">\n" + style + "<path " + fill +
         R"( fill-rule="evenodd" d=")" + pathData(area) + "\"/>\n</svg>\n";
}

}  // namespace lumowatt::artwork
