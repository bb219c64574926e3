#pragma once

namespace lumowatt {

/// A user-interface font of the platform.
struct Font {
  enum class Face {
    system,
    boldSystem,
    monospacedDigits,  ///< the system font with digits of equal width
  };

  Face face;
  double size;  ///< points

  friend bool operator==(const Font&, const Font&) = default;
};

inline constexpr Font systemFont(double size) { return {Font::Face::system, size}; }
inline constexpr Font boldSystemFont(double size) { return {Font::Face::boldSystem, size}; }
inline constexpr Font monospacedDigitFont(double size) {
  return {Font::Face::monospacedDigits, size};
}

}  // namespace lumowatt
