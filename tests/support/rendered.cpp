#include "support/rendered.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "support/files.h"
#include "support/fixtures.h"
#include "support/process.h"

namespace lumowatt {

namespace {

/// Returns the largest difference between the components of two pixels, from 0 to 255. Color
/// components are multiplied by alpha, so the color of a transparent pixel has no effect.
int visibleDifference(const Pixel& a, const Pixel& b) {
  const auto component = [&](int Pixel::*color) {
    return std::abs(a.*color * a.alpha - b.*color * b.alpha) / 255;
  };
  return std::max({component(&Pixel::red), component(&Pixel::green), component(&Pixel::blue),
                   std::abs(a.alpha - b.alpha)});
}

}  // namespace

Picture rendered(const std::string& svg, int side) {
  const TemporaryFolder folder;
  const std::string png = folder.path() / "picture.png";
  const std::string pixels = std::to_string(side);
  const auto result = runProcess({"rsvg-convert", "-w", pixels, "-h", pixels, "-o", png, svg});
  EXPECT_EQ(result.status, 0) << result.errors;
  return Picture(fileContents(png));
}

void expectLooksLike(const std::string& contents, const std::string& name) {
  const Picture reference(fileContents(fixturePath("pictures", name + ".png")));
  const TemporaryFolder folder;
  folder.write("picture.svg", contents);
  const auto png = folder.path() / "picture.png";
  const auto result =
      runProcess({"rsvg-convert", "--keep-aspect-ratio", "-h", std::to_string(reference.height()),
                  "-o", png, folder.path() / "picture.svg"});
  ASSERT_EQ(result.status, 0) << result.errors;
  const Picture picture(fileContents(png));

  int different = 0;
  if (picture.width() == reference.width()) {
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        // The threshold allows for rounding differences between versions of librsvg and Cairo.
        if (visibleDifference(picture.at(x, y), reference.at(x, y)) > 24) ++different;
      }
    }
  }
  const std::filesystem::path pictures = LUMOWATT_PICTURES;
  if (different > 0 || picture.width() != reference.width()) {
    std::filesystem::create_directories(pictures);
    std::filesystem::copy_file(png, pictures / (name + ".png"),
                               std::filesystem::copy_options::overwrite_existing);
  }
  EXPECT_EQ(picture.width(), reference.width()) << "see " << pictures / (name + ".png");
  EXPECT_EQ(different, 0) << "see " << pictures / (name + ".png");
}

}  // namespace lumowatt
