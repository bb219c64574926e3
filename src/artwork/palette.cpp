#include "artwork/palette.h"

#include <algorithm>
#include <variant>

#include "base/rounding.h"

namespace lumowatt::artwork {

namespace {

/// A colour as style sheets have it, 0xRRGGBBAA.
constexpr Rgba rgba(unsigned value) {
  const auto component = [value](unsigned shift) { return ((value >> shift) & 0xffU) / 255.0; };
  return {component(24), component(16), component(8), component(0)};
}

struct Shades {
  SystemColor color;
  Rgba onLight;
  Rgba onDark;
};

constexpr Shades shades[] = {
    {SystemColor::green, rgba(0x28cd41ff), rgba(0x32d74bff)},
    {SystemColor::orange, rgba(0xff9500ff), rgba(0xff9f0aff)},
    {SystemColor::red, rgba(0xff3b30ff), rgba(0xff453aff)},
    {SystemColor::accent, rgba(0x007affff), rgba(0x0a84ffff)},
    {SystemColor::label, rgba(0x000000d9), rgba(0xffffffd9)},
    {SystemColor::secondaryLabel, rgba(0x00000080), rgba(0xffffff8c)},
    {SystemColor::separator, rgba(0x0000001a), rgba(0xffffff1a)},
    {SystemColor::windowBackground, rgba(0xfafafaff), rgba(0x242424ff)},
};

double rounded(double component) {
  return static_cast<double>(roundedHalfAwayFromZero(component * 255.0).value_or(0)) / 255.0;
}

/// Gives each kind of colour its components.
struct Resolver {
  Appearance appearance;

  Rgba operator()(SystemColor color) const {
    const auto& shade = *std::ranges::find(shades, color, &Shades::color);
    return appearance == Appearance::dark ? shade.onDark : shade.onLight;
  }
  Rgba operator()(const CalibratedRgb& color) const {
    return {rounded(color.red), rounded(color.green), rounded(color.blue), 1.0};
  }
  Rgba operator()(const CalibratedWhite& grey) const {
    const double level = rounded(grey.white);
    return {level, level, level, 1.0};
  }
};

}  // namespace

Rgba resolved(const Color& color, Appearance appearance) {
  return std::visit(Resolver{appearance}, color);
}

}  // namespace lumowatt::artwork
