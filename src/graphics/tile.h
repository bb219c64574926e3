#pragma once

#include <optional>
#include <string>
#include <vector>

#include "graphics/color.h"

namespace lumowatt {

/// An arrow or a dot that stands behind the text of a row.
struct TileMark {
  std::string text;
  std::optional<SystemColor> color;  ///< absent: as in a row

  friend bool operator==(const TileMark&, const TileMark&) = default;
};

/// A row of text in a tile.
struct TileRow {
  std::string text;  ///< UTF-8; what it may have is in artwork/characters.h
  /// Absent: the color of what surrounds the tile.
  std::optional<SystemColor> color = std::nullopt;
  std::optional<TileMark> mark = std::nullopt;

  friend bool operator==(const TileRow&, const TileRow&) = default;
};

/// A square icon that is text: one row or two, the upper one in bold. A second row of a mark alone
/// is low, and leaves its place to the first.
using Tile = std::vector<TileRow>;

}  // namespace lumowatt
