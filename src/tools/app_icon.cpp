#include "tools/app_icon.h"

#include <algorithm>
#include <string_view>
#include <variant>

#include "artwork/battery.h"
#include "artwork/svg.h"
#include "base/number.h"
#include "graphics/symbol.h"

namespace lumowatt::artwork {

namespace {

constexpr double side = 1024.0;
constexpr double scale = 40.0;

constexpr std::string_view boltColor = "#129a50";
constexpr std::string_view bodyColor = "#f4f1fa";

constexpr std::string_view background =
    R"(<linearGradient id="night" x1="0" y1="0" x2="0" y2="1">
<stop offset="0" stop-color="#4b3d74"/>
<stop offset="1" stop-color="#1a1426"/>
</linearGradient>
<rect x="100" y="100" width="824" height="824" rx="186" fill='url(#night)'/>
)";

std::string filledElement(const Path& path, std::string_view color) {
  return "<path fill=\"" + std::string(color) + R"(" fill-rule="evenodd" d=")" + pathData(path) +
         "\"/>\n";
}

}  // namespace

std::string appIcon() {
  const Path glyph = symbolPath(symbol::battery100Bolt).value();
  // The second figure is the bolt. In the symbol it is a hole in the body, the first figure. Here
  // both are filled, and the bolt covers the body.
  const auto end = std::ranges::find_if(
      glyph, [](const auto& element) { return std::holds_alternative<ClosePath>(element); });
  const Path body(glyph.begin(), end + 1);
  const Path bolt(end + 1, glyph.end());
  const std::string offset = fixed((side - gridSize * scale) / 2.0, 1);
  return R"(<svg xmlns="http://www.w3.org/2000/svg" width="1024" height="1024" )"
         R"(viewBox="0 0 1024 1024">)"
         "\n" +
         std::string(background) + "<g transform=\"translate(" + offset + "," + offset +
         ") scale(" + fixed(scale, 0) + ")\">\n" + filledElement(body, bodyColor) +
         filledElement(bolt, boltColor) + "</g>\n</svg>\n";
}

}  // namespace lumowatt::artwork
