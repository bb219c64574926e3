#pragma once

namespace lumowatt {

/// A colour that the platform defines and may change with its light or dark appearance.
enum class SystemColor { green, orange, red };

/// A colour as a value. A platform resolves it at the moment it draws.
struct Color {
  SystemColor system;

  friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color systemGreen{SystemColor::green};
inline constexpr Color systemOrange{SystemColor::orange};
inline constexpr Color systemRed{SystemColor::red};

}  // namespace lumowatt
