#include "tools/icns.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace lumowatt::artwork {

namespace {

/// A kind of PNG picture that macOS accepts in an application icon. The sizes of 16 and 32 points
/// exist only at double resolution (ic11, ic12), because macOS accepts no PNG for them at single
/// resolution.
struct Kind {
  std::string_view type;
  int side;  ///< width and height in pixels
};

constexpr std::array<Kind, 8> kinds{{{"ic11", 32},
                                     {"ic12", 64},
                                     {"ic07", 128},
                                     {"ic13", 256},
                                     {"ic08", 256},
                                     {"ic14", 512},
                                     {"ic09", 512},
                                     {"ic10", 1024}}};

/// Returns a block: the type, the length of the entire block as four bytes in big-endian order, and
/// the data.
std::string block(std::string_view type, const std::string& data) {
  const std::size_t length = data.size() + 8;
  std::string result(type);
  for (const int shift : {24, 16, 8, 0}) {
    result += static_cast<char>(static_cast<unsigned char>((length >> shift) & 0xFFU));
  }
  return result + data;
}

}  // namespace

std::vector<int> icnsSides() {
  std::vector<int> sides;
  for (const Kind& kind : kinds) {
    if (sides.empty() || sides.back() != kind.side) sides.push_back(kind.side);
  }
  return sides;
}

std::optional<std::string> icns(const std::vector<IconPicture>& pictures) {
  std::string blocks;
  for (const IconPicture& picture : pictures) {
    if (std::ranges::find(kinds, picture.side, &Kind::side) == kinds.end()) return std::nullopt;
    for (const Kind& kind : kinds) {
      if (kind.side == picture.side) blocks += block(kind.type, picture.png);
    }
  }
  return block("icns", blocks);
}

}  // namespace lumowatt::artwork
