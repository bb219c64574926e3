#include "support/rendered.h"

#include <gtest/gtest.h>

#include "support/files.h"
#include "support/process.h"

namespace lumowatt {

Picture rendered(const std::string& svg, int side) {
  const TemporaryFolder folder;
  const std::string png = folder.path() / "picture.png";
  const std::string pixels = std::to_string(side);
  const auto result = runProcess({"rsvg-convert", "-w", pixels, "-h", pixels, "-o", png, svg});
  EXPECT_EQ(result.status, 0) << result.errors;
  return Picture(fileContents(png));
}

}  // namespace lumowatt
