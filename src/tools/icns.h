#pragma once

#include <optional>
#include <string>
#include <vector>

/// The file format of application icons on macOS.
namespace lumowatt::artwork {

/// A square picture of an icon, as a PNG file.
struct IconPicture {
  int side;  ///< width and height, in pixels
  std::string png;
};

/// Returns the sides of the pictures that an icon file can contain, in pixels: those of 16 to 512
/// points with two pixels per point, and those of 128 to 512 points with one pixel per point.
std::vector<int> icnsSides();

/// Returns an icon file with the given pictures. A picture can be written twice: 256 pixels are
/// both 256 points with one pixel per point and 128 points with two. Returns std::nullopt if a
/// picture has a side that is not in `icnsSides`.
std::optional<std::string> icns(const std::vector<IconPicture>& pictures);

}  // namespace lumowatt::artwork
