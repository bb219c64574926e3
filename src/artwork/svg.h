#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/color.h"
#include "graphics/path.h"

/// SVG icons for Linux panels.
namespace lumowatt::artwork {

/// A color in which each symbol has an icon. Since the background of the panel is unknown, each
/// tint has a contrast of at least 3:1 to white and to dark grays.
struct IconTint {
  SystemColor color;
  std::string_view name;
  std::string_view value;  ///< in CSS syntax
};

inline constexpr std::array<IconTint, 3> iconTints{{{SystemColor::green, "green", "#26a650"},
                                                    {SystemColor::orange, "orange", "#e07600"},
                                                    {SystemColor::red, "red", "#f0403a"}}};

/// The color of templates in panels that do not recolor them. It depends on the color scheme of the
/// desktop. If that is unknown, it is a gray that is visible on light and on dark panels.
enum class Ink { unknown, dark, light };

struct IconInk {
  Ink ink;
  std::string_view name;   ///< end of the names of icons in this ink
  std::string_view value;  ///< in CSS syntax
};

inline constexpr std::array<IconInk, 3> iconInks{{{Ink::unknown, "symbolic", "#909090"},
                                                  {Ink::dark, "dark-symbolic", "#303030"},
                                                  {Ink::light, "light-symbolic", "#e8e8e8"}}};

/// Returns a length or coordinate in SVG syntax, rounded to thousandths: "2", "0.75".
std::string decimal(double value);

/// Returns a path as SVG path data.
std::string pathData(const Path& path);

/// Returns the name of the icon of a symbol: tinted or, without a tint, as a template in an ink.
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

/// Returns the icon of an area on the square of the symbols: tinted, or as a template in an ink.
std::string symbolIcon(const Path& path, std::optional<SystemColor> tint, Ink ink = Ink::unknown);

}  // namespace lumowatt::artwork
