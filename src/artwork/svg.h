#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/color.h"
#include "graphics/path.h"

/// Icons for Linux panels, as SVG files.
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

/// The color of a template where the panel does not recolor it, as the desktop's color scheme asks
/// for it. Where that is not known it is a gray that can be made out on light and on dark panels.
enum class Ink { unknown, dark, light };

struct IconInk {
  Ink ink;
  std::string_view name;   ///< how the name of an icon in it ends
  std::string_view value;  ///< as in style sheets
};

inline constexpr std::array<IconInk, 3> iconInks{{{Ink::unknown, "symbolic", "#909090"},
                                                  {Ink::dark, "dark-symbolic", "#303030"},
                                                  {Ink::light, "light-symbolic", "#e8e8e8"}}};

/// A length or coordinate as SVG has it, to the nearest thousandth: "2", "0.75".
std::string decimal(double value);

/// A path as SVG's path data.
std::string pathData(const Path& path);

/// The name of the icon that shows a symbol in a tint or, without one, as a template in an ink. A
/// template's ends in "-symbolic", by which GTK knows that it is to color it. A color that is not
/// among the tints counts as none.
std::string iconName(std::string_view symbol, std::optional<SystemColor> tint,
                     Ink ink = Ink::unknown);

/// An area with these attributes, as an element of an icon: in a tint, which stays what it is also
/// in an icon that GTK colors, or without one as a template. Panels color that through the file's
/// style sheet (KDE) or its shapes (GTK); where none does, it has the icon's ink.
std::string area(const Path& path, std::optional<SystemColor> tint, std::string_view attributes);

/// An icon of that size as an SVG file, with the style sheet of templates in that ink, shown so
/// many times as large where nobody asks for a size.
std::string svg(const Size& size, const std::string& elements, Ink ink = Ink::unknown,
                double magnification = 1.0);

/// The icon of an area on the symbols' square, in a tint or as a template in an ink.
std::string symbolIcon(const Path& path, std::optional<SystemColor> tint, Ink ink = Ink::unknown);

}  // namespace lumowatt::artwork
