#pragma once

#include <optional>
#include <string>
#include <vector>

#include "graphics/color.h"

namespace lumowatt {

/// An arrow or a dot after the text of a row.
struct TileMark {
  std::string text;
  std::optional<SystemColor> color;  ///< if empty: the text color around the tile

  friend bool operator==(const TileMark&, const TileMark&) = default;
};

/// A row of text in a tile.
struct TileRow {
  std::string text;  ///< UTF-8; artwork/characters.h lists the supported characters
  /// If empty: the text color around the tile.
  std::optional<SystemColor> color = std::nullopt;
  std::optional<TileMark> mark = std::nullopt;

  friend bool operator==(const TileRow&, const TileRow&) = default;
};

/// A square icon with one or two rows of text, the upper row in bold. The upper row is drawn larger
/// if the text of the lower row is a single arrow or dot.
using Tile = std::vector<TileRow>;

}  // namespace lumowatt
