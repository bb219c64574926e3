#pragma once

#include <variant>

namespace lumowatt {

/// The kind of background that a picture is displayed on.
enum class Appearance { light, dark };

/// A color that the platform defines for each appearance.
enum class SystemColor {
  green,
  orange,
  red,
  accent,          ///< chosen by the user for selected and active elements
  label,           ///< primary text
  secondaryLabel,  ///< less important text
  separator,       ///< dividing lines
  windowBackground,
};

/// An opaque color in the RGB space of the display. Each component is from 0 to 1.
struct CalibratedRgb {
  double red;
  double green;
  double blue;

  friend bool operator==(const CalibratedRgb&, const CalibratedRgb&) = default;
};

/// An opaque gray, from 0 (black) to 1 (white).
struct CalibratedWhite {
  double white;

  friend bool operator==(const CalibratedWhite&, const CalibratedWhite&) = default;
};

/// A color. The platform resolves a system color when it draws.
using Color = std::variant<SystemColor, CalibratedRgb, CalibratedWhite>;

inline constexpr Color systemGreen = SystemColor::green;
inline constexpr Color systemOrange = SystemColor::orange;
inline constexpr Color systemRed = SystemColor::red;
inline constexpr Color secondaryLabel = SystemColor::secondaryLabel;
inline constexpr Color separator = SystemColor::separator;
inline constexpr Color white = CalibratedWhite{1.0};

}  // namespace lumowatt
