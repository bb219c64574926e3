#include "artwork/tile_icon.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "artwork/characters.h"
#include "artwork/svg.h"

namespace lumowatt::artwork {

namespace {

// A unit is a pixel of the larger of the two sizes at which panels show most icons, 22 and 16. At
// the smaller one, too, there is a row of pixels between two rows of text that is nearly free.
constexpr double side = 22.0;
constexpr double room = side - 1.0;  // for a row: tiles may stand close together

/// Where the upper edge of a row is, and how it is written.
struct RowStyle {
  double top;
  Lettering lettering;
};

constexpr RowStyle alone{5.0, {.height = 11.0, .width = 5.6, .gap = 1.0, .weight = 2.0}};
constexpr RowStyle bold{0.0, {.height = 10.0, .width = 5.6, .gap = 1.0, .weight = 2.0}};
constexpr RowStyle plain{13.0, {.height = 9.0, .width = 4.4, .gap = 0.8, .weight = 1.5}};
constexpr RowStyle aboveMark{1.0, {.height = 13.0, .width = 6.2, .gap = 1.0, .weight = 2.2}};
constexpr RowStyle mark{14.8, {.height = 9.0, .width = 10.0, .gap = 0.0, .weight = 0.0}};

constexpr std::array<std::string_view, 3> marks{"▲", "▼", "•"};

RowStyle style(const Tile& tile, std::size_t row) {
  if (tile.size() == 1) return alone;
  const bool hasMark = std::ranges::find(marks, tile[1].text) != marks.end();
  if (row == 0) return hasMark ? aboveMark : bold;
  return hasMark ? mark : plain;
}

std::string element(const TileRow& row, const RowStyle& style) {
  const auto text = outline(row.text, style.lettering);
  if (!text) return "";
  const double narrowing = std::min(room / text->width, 1.0);
  const double left = (side - text->width * narrowing) / 2.0;
  return area(text->area, row.color,
              "transform=\"translate(" + decimal(left) + "," + decimal(style.top) + ") scale(" +
                  decimal(narrowing) + ",1)\"");
}

}  // namespace

std::string tileIcon(const Tile& tile) {
  std::string rows;
  for (std::size_t i = 0; i < tile.size(); ++i) rows += element(tile[i], style(tile, i));
  return svg({side, side}, rows);
}

}  // namespace lumowatt::artwork
