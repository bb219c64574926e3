#pragma once

#include <optional>
#include <string>
#include <vector>

/// The file of an application's icon on a Mac.
namespace lumowatt::artwork {

/// An icon as the PNG file of a square picture.
struct IconPicture {
  int side;  ///< pixels
  std::string png;
};

/// The sides for which an icon file has a place: 16 to 512 points, as they are on displays with two
/// pixels to a point, and from 128 points on with one.
std::vector<int> icnsSides();

/// An icon file with those pictures. A picture of one side may have two places in it. Absent when
/// the file has no place for one of them.
std::optional<std::string> icns(const std::vector<IconPicture>& pictures);

}  // namespace lumowatt::artwork
