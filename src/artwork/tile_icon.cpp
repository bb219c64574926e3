#include "artwork/tile_icon.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "artwork/characters.h"

namespace lumowatt::artwork {

namespace {

// Most panels show icons at 22 or 16 pixels. A unit is a pixel at the larger size. Even at the
// smaller size, a nearly empty row of pixels separates the two rows of text.
constexpr double side = 22.0;
constexpr double rowWidth = side - 1.0;  // of text; leaves a gap between adjacent tiles

/// Upper edge and lettering of a row.
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

// More than a pixel even at 16 pixels. Without a gap, the mark would look like part of the number.
constexpr double gapBeforeMark = 2.0;

RowStyle style(const Tile& tile, std::size_t row) {
  if (tile.size() == 1) return alone;
  const bool hasMark = std::ranges::find(marks, tile[1].text) != marks.end();
  if (row == 0) return hasMark ? aboveMark : bold;
  return hasMark ? mark : plain;
}

/// Returns the SVG elements of the text and the mark of a row, side by side and centered in the
/// tile.
std::string rowElements(const TileRow& row, const RowStyle& style) {
  const auto text = outline(row.text, style.lettering);
  if (!text) return "";
  const auto markOutline = row.mark ? outline(row.mark->text, style.lettering) : std::nullopt;
  const double markStart = text->width + gapBeforeMark;
  const double width = markOutline ? markStart + markOutline->width : text->width;
  const double scale = std::min(rowWidth / width, 1.0);
  const double left = (side - width * scale) / 2.0;
  const auto placed = [&](double start) {
    return "transform=\"translate(" + decimal(left + start * scale) + "," + decimal(style.top) +
           ") scale(" + decimal(scale) + ",1)\"";
  };
  std::string result = areaElement(text->area, row.color, placed(0.0));
  if (markOutline) {
    result += areaElement(markOutline->area, row.mark->color, placed(markStart));
  }
  return result;
}

}  // namespace

std::string tileIcon(const Tile& tile, Ink ink) {
  std::string rows;
  for (std::size_t i = 0; i < tile.size(); ++i) rows += rowElements(tile[i], style(tile, i));
  return svg({side, side}, rows, ink);
}

}  // namespace lumowatt::artwork
