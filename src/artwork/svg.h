#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/color.h"
#include "graphics/path.h"

/// Symbols as the icons that a Linux panel shows by name.
namespace lumowatt::artwork {

/// A colour in which there is an icon of each symbol. Whether the panel behind it is light or dark
/// is not known: what it covers has a contrast of at least 3 to 1 to white and to dark greys.
struct IconTint {
  SystemColor color;
  std::string_view name;
  std::string_view value;  ///< as in style sheets
};

inline constexpr std::array<IconTint, 3> iconTints{{{SystemColor::green, "green", "#26a650"},
                                                    {SystemColor::orange, "orange", "#e07600"},
                                                    {SystemColor::red, "red", "#f0403a"}}};

/// A path as SVG's path data.
std::string pathData(const Path& path);

/// The name of the icon that shows a symbol in a tint or, without one, as a template. A template's
/// ends in "-symbolic", by which GTK knows that it is to colour it. A colour that is not among the
/// tints counts as none.
std::string iconName(std::string_view symbol, std::optional<SystemColor> tint);

/// An area on the symbols' square as an SVG file: in a tint or, without one, as a template, which
/// panels colour through its style sheet (KDE) or its shapes (GTK); where none does, it is grey.
std::string svg(const Path& area, std::optional<SystemColor> tint);

}  // namespace lumowatt::artwork
