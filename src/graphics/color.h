#pragma once

#include <variant>

namespace lumowatt {

/// Whether what is drawn will stand on a light or on a dark background.
enum class Appearance { light, dark };

/// A colour that the platform defines for each appearance.
enum class SystemColor {
  green,
  orange,
  red,
  accent,          ///< the one that the user chose for what is selected or alive
  label,           ///< of text
  secondaryLabel,  ///< of text that matters less
  separator,       ///< of lines between things
  windowBackground,
};

/// An opaque colour by its components from 0 to 1, in the RGB space of the display.
struct CalibratedRgb {
  double red;
  double green;
  double blue;

  friend bool operator==(const CalibratedRgb&, const CalibratedRgb&) = default;
};

/// An opaque grey, from 0 (black) to 1 (white).
struct CalibratedWhite {
  double white;

  friend bool operator==(const CalibratedWhite&, const CalibratedWhite&) = default;
};

/// A colour as a value. A platform resolves it at the moment it draws.
using Color = std::variant<SystemColor, CalibratedRgb, CalibratedWhite>;

inline constexpr Color systemGreen = SystemColor::green;
inline constexpr Color systemOrange = SystemColor::orange;
inline constexpr Color systemRed = SystemColor::red;
inline constexpr Color secondaryLabel = SystemColor::secondaryLabel;
inline constexpr Color separator = SystemColor::separator;
inline constexpr Color white = CalibratedWhite{1.0};

}  // namespace lumowatt
