#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "graphics/geometry.h"

namespace lumowatt {

/// The components of a pixel, from 0 to 255, without premultiplied alpha.
struct Pixel {
  int red;
  int green;
  int blue;
  int alpha;

  friend bool operator==(const Pixel&, const Pixel&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Pixel& pixel);

std::ostream& operator<<(std::ostream& stream, const Rect& rect);

/// Returns the largest difference between the components of two pixels.
int difference(const Pixel& a, const Pixel& b);

/// Returns the relative luminance as defined by WCAG 2.1, from 0 to 1. Ignores alpha.
double luminance(const Pixel& pixel);

/// Returns the contrast ratio as defined by WCAG 2.1, from 1 to 21. WCAG requires 4.5 for text.
double contrast(const Pixel& a, const Pixel& b);

/// A decoded PNG file.
class Picture {
 public:
  /// Decodes `png`, the contents of a PNG file. Fails the running test if they are invalid.
  explicit Picture(const std::string& png);

  int width() const { return width_; }
  int height() const { return height_; }

  /// Returns the pixel in column `x` of row `y`, counted from the top left corner. Fails the
  /// running test if there is no such pixel.
  Pixel at(int x, int y) const;

  /// Returns the smallest rectangle that contains all pixels of `area` whose color differs from
  /// `background` by more than rounding. Returns an empty rectangle if there is no such pixel.
  Rect inkBounds(const Rect& area, const Pixel& background) const;

  /// Returns the number of pixels in `area` whose color differs from `background` by more than
  /// rounding.
  int inkCount(const Rect& area, const Pixel& background) const;

  /// Returns the covered area in pixels: the sum of all alpha values, divided by 255.
  double coverage() const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint8_t> components_;
};

/// Returns the difference in coverage between two pictures of the same size, in pixels: the sum of
/// the absolute differences of their alpha values, divided by 255.
double alphaDistance(const Picture& a, const Picture& b);

/// Returns the resolution that `png`, the contents of a PNG file, specifies in pixels per meter.
/// Returns 0 if the file specifies no resolution.
std::uint32_t pixelsPerMeter(const std::string& png);

}  // namespace lumowatt
