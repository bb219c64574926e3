#pragma once

#include <optional>
#include <string>
#include <vector>

#include "graphics/color.h"

namespace lumowatt {

/// A row of text in a tile.
struct TileRow {
  std::string text;  ///< UTF-8; what it may have is in artwork/characters.h
  /// Absent: the colour of what surrounds the tile.
  std::optional<SystemColor> color = std::nullopt;

  friend bool operator==(const TileRow&, const TileRow&) = default;
};

/// A square icon that is text: one row or two, the upper one in bold. A second row of a mark alone
/// is low, and leaves its place to the first.
using Tile = std::vector<TileRow>;

}  // namespace lumowatt
