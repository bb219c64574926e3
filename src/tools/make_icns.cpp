// Writes the icon file of a macOS application from pictures of several sizes:
//
//   make_icns FILE FOLDER
//
// FOLDER contains the pictures as PNG files. A file is named "SIDE.png" after its width and height
// in pixels. All sizes that an icon file can contain are required.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tools/icns.h"

int main(int argc, char** argv) {
  using namespace lumowatt::artwork;
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_icns FILE FOLDER\n");
    return 2;
  }
  std::vector<IconPicture> pictures;
  for (const int side : icnsSides()) {
    const std::string path = argv[2] + ("/" + std::to_string(side) + ".png");
    std::ifstream picture(path, std::ios::binary);
    if (!picture) {
      std::fprintf(stderr, "make_icns: cannot read %s\n", path.c_str());
      return EXIT_FAILURE;
    }
    pictures.push_back({side, {std::istreambuf_iterator<char>(picture), {}}});
  }
  std::ofstream file(argv[1], std::ios::binary);
  file << icns(pictures).value() << std::flush;
  if (!file) {
    std::fprintf(stderr, "make_icns: cannot write %s\n", argv[1]);
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
