#pragma once

#include "graphics/color.h"

namespace lumowatt::artwork {

/// Components of a color, from 0 to 1. Each is a multiple of 1/255, so that a pixel represents the
/// color exactly. Alpha 1 is opaque.
struct Rgba {
  double red;
  double green;
  double blue;
  double alpha;

  friend bool operator==(const Rgba&, const Rgba&) = default;
};

/// Returns the components in which a color is drawn on a background of the given appearance.
Rgba resolved(const Color& color, Appearance appearance);

}  // namespace lumowatt::artwork
