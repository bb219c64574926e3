#pragma once

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "artwork/battery.h"
#include "artwork/svg.h"
#include "artwork/symbol_names.h"

namespace lumowatt::artwork {

inline std::string_view colorOf(Ink ink) {
  return std::ranges::find(iconInks, ink, &IconInk::ink)->value;
}

/// An icon of a symbol in a tint or in an ink.
struct Icon {
  std::string_view name;
  std::optional<SystemColor> tint = std::nullopt;
  Ink ink = Ink::unknown;

  std::string fileName() const { return iconName(name, tint, ink) + ".svg"; }
  std::string contents() const { return symbolIcon(symbolPath(name).value(), tint, ink); }

  std::string_view color() const {
    const auto* const known = std::ranges::find(iconTints, tint, &IconTint::color);
    return known != iconTints.end() ? known->value : colorOf(ink);
  }
};

inline std::ostream& operator<<(std::ostream& stream, const Icon& icon) {
  return stream << icon.fileName();
}

/// Returns the templates: every symbol, and `noBattery`, in each ink.
inline std::vector<Icon> templateIcons() {
  std::vector<Icon> all;
  for (const std::string_view name : symbolNames()) {
    for (const IconInk& ink : iconInks) all.push_back({.name = name, .ink = ink.ink});
  }
  return all;
}

/// Returns all templates, and every symbol in each tint.
inline std::vector<Icon> everyIcon() {
  std::vector<Icon> all = templateIcons();
  for (const std::string_view name : symbol::all) {
    for (const IconTint& tint : iconTints) all.push_back({.name = name, .tint = tint.color});
  }
  return all;
}

}  // namespace lumowatt::artwork
