#pragma once

#include "graphics/color.h"

namespace lumowatt::artwork {

/// A colour's components from 0 to 1, each a multiple of 1/255, as pixels have them. Alpha 1 is
/// opaque.
struct Rgba {
  double red;
  double green;
  double blue;
  double alpha;

  friend bool operator==(const Rgba&, const Rgba&) = default;
};

/// A colour as it is to be drawn on a background of the given appearance.
Rgba resolved(const Color& color, Appearance appearance);

}  // namespace lumowatt::artwork
