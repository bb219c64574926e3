#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/color.h"
#include "graphics/path.h"

/// SVG icons for Linux panels.
namespace lumowatt::artwork {

/// Tint: a color for which the build makes an icon of every symbol. Since the background of the
/// panel is unknown, each tint has a contrast of at least 3:1 to white and to dark grays.
struct IconTint {
  SystemColor color;
  std::string_view name;
  std::string_view value;  ///< in CSS syntax
};

inline constexpr std::array<IconTint, 3> iconTints{{{SystemColor::green, "green", "#26a650"},
                                                    {SystemColor::orange, "orange", "#e07600"},
                                                    {SystemColor::red, "red", "#f0403a"}}};

/// Color of template icons (monochrome icons that panels recolor) in panels that do not recolor
/// them. It depends on the desktop's color scheme. If the scheme is unknown, the color is a gray
/// that is visible on light and on dark panels.
enum class Ink { unknown, dark, light };

struct IconInk {
  Ink ink;
  std::string_view name;   ///< suffix of the names of icons in this ink
  std::string_view value;  ///< in CSS syntax
};

inline constexpr std::array<IconInk, 3> iconInks{{{Ink::unknown, "symbolic", "#909090"},
                                                  {Ink::dark, "dark-symbolic", "#303030"},
                                                  {Ink::light, "light-symbolic", "#e8e8e8"}}};

/// Returns a length or coordinate in SVG syntax, rounded to thousandths: "2", "0.75".
std::string decimal(double value);

/// Returns a path as SVG path data.
std::string pathData(const Path& path);

/// Returns the name of a symbol's icon: the tinted icon or, without a tint, the template in an ink.
/// The names of templates end in "-symbolic", which makes GTK recolor them. A color that is not in
/// `iconTints` counts as no tint.
std::string iconName(std::string_view symbol, std::optional<SystemColor> tint,
                     Ink ink = Ink::unknown);

/// Returns an SVG element that fills an area, with additional attributes. A tint is preserved even
/// in icons that GTK recolors. Without a tint, the element is a template: KDE recolors it through
/// the style sheet in the file, and GTK sets the fill of the shapes. Other panels show it in the
/// ink of the icon.
std::string areaElement(const Path& path, std::optional<SystemColor> tint,
                        std::string_view attributes);

/// Returns an SVG file that contains the elements and has coordinates from (0, 0) to `size`. Its
/// style sheet colors templates in the given ink. Its default display size is `size` multiplied by
/// `magnification`.
std::string svg(const Size& size, const std::string& elements, Ink ink = Ink::unknown,
                double magnification = 1.0);

/// Returns an SVG icon of the size of the symbols, in which `path` is filled: with the tint or,
/// without a tint, as a template in the given ink.
std::string symbolIcon(const Path& path, std::optional<SystemColor> tint, Ink ink = Ink::unknown);

}  // namespace lumowatt::artwork
