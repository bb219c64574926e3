#pragma once

#include <optional>
#include <string>

namespace lumowatt::cairo {

/// Pixels in Cairo's ARGB32 format: 32-bit words in native byte order, with alpha in the most
/// significant byte, then red, green and blue, each multiplied by alpha.
struct Pixels {
  int width;
  int height;
  int stride;  ///< bytes between the starts of consecutive rows
  const unsigned char* data;
};

/// Encodes pixels as a PNG file with 8 bits each of red, green, blue and alpha. The file specifies
/// the resolution `pixelsPerInch`. Returns std::nullopt if memory is short.
std::optional<std::string> encodePng(const Pixels& pixels, double pixelsPerInch);

}  // namespace lumowatt::cairo
