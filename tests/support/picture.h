#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "graphics/geometry.h"

namespace lumowatt {

/// A pixel's components, from 0 to 255. Red, green and blue are not multiplied by alpha.
struct Pixel {
  int red;
  int green;
  int blue;
  int alpha;

  friend bool operator==(const Pixel&, const Pixel&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Pixel& pixel);

std::ostream& operator<<(std::ostream& stream, const Rect& rect);

/// The largest difference between two pixels in a component.
int difference(const Pixel& a, const Pixel& b);

/// The relative luminance of WCAG 2.1, from 0 to 1.
double luminance(const Pixel& pixel);

/// The contrast ratio of WCAG 2.1, from 1 to 21. It asks for 4.5 of text.
double contrast(const Pixel& a, const Pixel& b);

/// A decoded PNG file.
class Picture {
 public:
  /// Fails the running test when `png` is not the contents of a PNG file.
  explicit Picture(const std::string& png);

  int width() const { return width_; }
  int height() const { return height_; }

  /// The pixel in column `x` of row `y`, from the top left.
  Pixel at(int x, int y) const;

  /// The smallest rectangle with all pixels of `area` that are not of the color `background`; empty
  /// where there are none.
  Rect inkBounds(const Rect& area, const Pixel& background) const;

  /// How many pixels of `area` are not of the color `background`.
  int inkCount(const Rect& area, const Pixel& background) const;

  /// How much of the picture is covered, in pixels: the sum of all alphas.
  double coverage() const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint8_t> components_;
};

/// How differently two pictures are covered, in pixels: the sum of the differences of their alphas.
double alphaDistance(const Picture& a, const Picture& b);

/// The resolution that a PNG file's contents tell, in pixels per metre; 0 without one.
std::uint32_t pixelsPerMetre(const std::string& png);

}  // namespace lumowatt
