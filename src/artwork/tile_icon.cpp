#include "artwork/tile_icon.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "artwork/characters.h"

namespace lumowatt::artwork {

namespace {

// A unit is a pixel of the larger of the two sizes at which panels show most icons, 22 and 16. At
// the smaller one, too, there is a row of pixels between two rows of text that is nearly free.
constexpr double side = 22.0;
constexpr double rowWidth = side - 1.0;  // for a row: tiles may stand close together

/// Where the upper edge of a row is, and how it is written.
struct RowStyle {
  double top;
  Lettering lettering;
};

constexpr RowStyle alone{5.0, {.height = 11.0, .width = 5.6, .gap = 1.0, .weight = 2.0}};
constexpr RowStyle bold{0.0, {.height = 10.0, .width = 5.6, .gap = 1.0, .weight = 2.0}};
constexpr RowStyle plain{13.0, {.height = 9.0, .width = 4.4, .gap = 0.8, .weight = 1.5}};
constexpr RowStyle aboveMark{0.0, {.height = 13.0, .width = 6.2, .gap = 1.0, .weight = 2.2}};
constexpr RowStyle mark{14.0, {.height = 10.0, .width = 0.0, .gap = 0.0, .weight = 0.0}};

constexpr std::array<std::string_view, 3> marks{"▲", "▼", "•"};

// At 16 pixels still a pixel, without which the mark reads as a part of the figure.
constexpr double gapBeforeMark = 2.0;

RowStyle style(const Tile& tile, std::size_t row) {
  if (tile.size() == 1) return alone;
  const bool hasMark = std::ranges::find(marks, tile[1].text) != marks.end();
  if (row == 0) return hasMark ? aboveMark : bold;
  return hasMark ? mark : plain;
}

/// A row's text and its mark, side by side in the middle of the tile.
std::string elements(const TileRow& row, const RowStyle& style) {
  const auto text = outline(row.text, style.lettering);
  if (!text) return "";
  const auto markOutline = row.mark ? outline(row.mark->text, style.lettering) : std::nullopt;
  const double markStart = text->width + gapBeforeMark;
  const double width = markOutline ? markStart + markOutline->width : text->width;
  const double narrowing = std::min(rowWidth / width, 1.0);
  const double left = (side - width * narrowing) / 2.0;
  const auto placed = [&](double start) {
    return "transform=\"translate(" + decimal(left + start * narrowing) + "," + decimal(style.top) +
           ") scale(" + decimal(narrowing) + ",1)\"";
  };
  std::string result = area(text->area, row.color, placed(0.0));
  if (markOutline) result += area(markOutline->area, row.mark->color, placed(markStart));
  return result;
}

}  // namespace

std::string tileIcon(const Tile& tile, Ink ink) {
  std::string rows;
  for (std::size_t i = 0; i < tile.size(); ++i) rows += elements(tile[i], style(tile, i));
  return svg({side, side}, rows, ink);
}

}  // namespace lumowatt::artwork
