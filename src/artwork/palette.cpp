#include "artwork/palette.h"

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
  Rgba onLight;
  Rgba onDark;
};

constexpr Shades shades(SystemColor color) {
  switch (color) {
    case SystemColor::green:
      return {rgba(0x28cd41ff), rgba(0x32d74bff)};
    case SystemColor::orange:
      return {rgba(0xff9500ff), rgba(0xff9f0aff)};
    case SystemColor::red:
      return {rgba(0xff3b30ff), rgba(0xff453aff)};
    case SystemColor::accent:
      return {rgba(0x007affff), rgba(0x0a84ffff)};
    case SystemColor::label:
      return {rgba(0x000000d9), rgba(0xffffffd9)};
    case SystemColor::secondaryLabel:
      return {rgba(0x00000080), rgba(0xffffff8c)};
    case SystemColor::separator:
      break;
  }
  return {rgba(0x0000001a), rgba(0xffffff1a)};
}

double rounded(double component) {
  return static_cast<double>(roundedHalfAwayFromZero(component * 255.0).value_or(0)) / 255.0;
}

/// Gives each kind of colour its components.
struct Resolver {
  Appearance appearance;

  Rgba operator()(SystemColor color) const {
    const auto [onLight, onDark] = shades(color);
    return appearance == Appearance::dark ? onDark : onLight;
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
