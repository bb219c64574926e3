#include "artwork/palette.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <variant>

#include "base/rounding.h"

namespace lumowatt::artwork {

namespace {

constexpr Rgba rgba(unsigned value) {
  const auto component = [value](unsigned shift) { return ((value >> shift) & 0xffU) / 255.0; };
  return {component(24), component(16), component(8), component(0)};
}

struct Shades {
  SystemColor color;
  unsigned onLight;  // 0xRRGGBBAA
  unsigned onDark;
};

constexpr std::array<Shades, 8> shades{{
    {SystemColor::green, 0x28cd41ff, 0x32d74bff},
    {SystemColor::orange, 0xff9500ff, 0xff9f0aff},
    {SystemColor::red, 0xff3b30ff, 0xff453aff},
    {SystemColor::accent, 0x007affff, 0x0a84ffff},
    {SystemColor::label, 0x000000d9, 0xffffffd9},
    {SystemColor::secondaryLabel, 0x00000080, 0xffffff8c},
    {SystemColor::separator, 0x0000001a, 0xffffff1a},
    {SystemColor::windowBackground, 0xfafafaff, 0x242424ff},
}};
static_assert(static_cast<std::size_t>(SystemColor::windowBackground) + 1 == shades.size());

double rounded(double component) {
  return static_cast<double>(roundedHalfAwayFromZero(component * 255.0).value_or(0)) / 255.0;
}

/// Visitor that returns the components of a color.
struct Resolver {
  Appearance appearance;

  Rgba operator()(SystemColor color) const {
    const auto& shade = *std::ranges::find(shades, color, &Shades::color);
    return rgba(appearance == Appearance::dark ? shade.onDark : shade.onLight);
  }
  Rgba operator()(const CalibratedRgb& color) const {
    return {rounded(color.red), rounded(color.green), rounded(color.blue), 1.0};
  }
  Rgba operator()(const CalibratedWhite& gray) const {
    const double level = rounded(gray.white);
    return {level, level, level, 1.0};
  }
};

}  // namespace

Rgba resolved(const Color& color, Appearance appearance) {
  return std::visit(Resolver{appearance}, color);
}

}  // namespace lumowatt::artwork
