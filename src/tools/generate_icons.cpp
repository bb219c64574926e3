// Writes icons into a folder:
//
//   generate_icons FOLDER
//
// The icons are the symbols in each ink and in each tint, the crossed-out battery for machines
// without a battery in each ink, and the application icon.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

#include "artwork/battery.h"
#include "artwork/svg.h"
#include "graphics/symbol.h"
#include "tools/app_icon.h"

namespace lumowatt::artwork {

namespace {

void write(const std::string& path, const std::string& contents) {
  std::ofstream file(path);
  file << contents << std::flush;
  if (!file) {
    std::fprintf(stderr, "generate_icons: cannot write %s\n", path.c_str());
    std::exit(EXIT_FAILURE);
  }
}

void writeTemplates(const std::string& folder, std::string_view symbol) {
  const Path path = symbolPath(symbol).value();
  for (const IconInk& ink : iconInks) {
    write(folder + "/" + iconName(symbol, std::nullopt, ink.ink) + ".svg",
          symbolIcon(path, std::nullopt, ink.ink));
  }
}

void writeTinted(const std::string& folder, std::string_view symbol) {
  const Path path = symbolPath(symbol).value();
  for (const IconTint& tint : iconTints) {
    write(folder + "/" + iconName(symbol, tint.color) + ".svg", symbolIcon(path, tint.color));
  }
}

}  // namespace

}  // namespace lumowatt::artwork

int main(int argc, char** argv) {
  using namespace lumowatt;
  if (argc != 2) {
    std::fprintf(stderr, "usage: generate_icons FOLDER\n");
    return 2;
  }
  const std::string folder = argv[1];
  for (const std::string_view symbol : symbol::all) {
    artwork::writeTemplates(folder, symbol);
    artwork::writeTinted(folder, symbol);
  }
  artwork::writeTemplates(folder, artwork::noBattery);
  const std::string application = folder + "/com.fernhollow.Lumowatt";
  artwork::write(application + ".svg", artwork::appIcon());
  artwork::write(application + "-symbolic.svg",
                 artwork::symbolIcon(artwork::symbolPath(symbol::battery100Bolt).value(), {}));
  return EXIT_SUCCESS;
}
