#pragma once

#include <optional>
#include <string>

namespace lumowatt::cairo {

/// Pixels as Cairo's ARGB32 has them: 32 bits in the machine's order, alpha in the highest, then
/// red, green and blue, each multiplied by alpha.
struct Pixels {
  int width;
  int height;
  int stride;  ///< bytes from one row to the next
  const unsigned char* data;
};

/// A PNG file with 8 bits each of red, green, blue and alpha, which says that it has
/// `pixelsPerInch`. Absent when memory is short.
std::optional<std::string> encodePng(const Pixels& pixels, double pixelsPerInch);

}  // namespace lumowatt::cairo
