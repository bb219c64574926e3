#include "support/picture.h"

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumowatt {

std::ostream& operator<<(std::ostream& stream, const Pixel& pixel) {
  return stream << "(" << pixel.red << ", " << pixel.green << ", " << pixel.blue << ", "
                << pixel.alpha << ")";
}

std::ostream& operator<<(std::ostream& stream, const Rect& rect) {
  return stream << "(" << rect.x << ", " << rect.y << ", " << rect.width << " x " << rect.height
                << ")";
}

int difference(const Pixel& a, const Pixel& b) {
  return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue),
                   std::abs(a.alpha - b.alpha)});
}

double luminance(const Pixel& pixel) {
  const auto linear = [](int component) {
    const double share = component / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(pixel.red) + 0.7152 * linear(pixel.green) + 0.0722 * linear(pixel.blue);
}

double contrast(const Pixel& a, const Pixel& b) {
  const auto [low, high] = std::minmax({luminance(a), luminance(b)});
  return (high + 0.05) / (low + 0.05);
}

Picture::Picture(const std::string& png) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  const bool hasHeader = png_image_begin_read_from_memory(&image, png.data(), png.size()) != 0;
  image.format = PNG_FORMAT_RGBA;
  if (hasHeader) components_.resize(PNG_IMAGE_SIZE(image));
  const bool isDecoded =
      hasHeader && png_image_finish_read(&image, nullptr, components_.data(), 0, nullptr) != 0;
  EXPECT_TRUE(isDecoded) << image.message;
  if (!isDecoded) return;
  width_ = static_cast<int>(image.width);
  height_ = static_cast<int>(image.height);
}

Pixel Picture::at(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) {
    ADD_FAILURE() << "no pixel at " << x << ", " << y;
    return {};
  }
  const auto start = components_.begin() + 4 * (static_cast<std::ptrdiff_t>(y) * width_ + x);
  return {start[0], start[1], start[2], start[3]};
}

Rect Picture::inkBounds(const Rect& area, const Pixel& background) const {
  int left = std::numeric_limits<int>::max();
  int top = left;
  int right = -1;
  int bottom = -1;
  for (int y = static_cast<int>(area.minY()); y < static_cast<int>(area.maxY()); ++y) {
    for (int x = static_cast<int>(area.minX()); x < static_cast<int>(area.maxX()); ++x) {
      if (difference(at(x, y), background) <= 2) continue;
      left = std::min(left, x);
      top = std::min(top, y);
      right = std::max(right, x);
      bottom = std::max(bottom, y);
    }
  }
  if (right < 0) return {};
  return {static_cast<double>(left), static_cast<double>(top),
          static_cast<double>(right + 1 - left), static_cast<double>(bottom + 1 - top)};
}

int Picture::inkCount(const Rect& area, const Pixel& background) const {
  int count = 0;
  for (int y = static_cast<int>(area.minY()); y < static_cast<int>(area.maxY()); ++y) {
    for (int x = static_cast<int>(area.minX()); x < static_cast<int>(area.maxX()); ++x) {
      if (difference(at(x, y), background) > 2) ++count;
    }
  }
  return count;
}

double Picture::coverage() const {
  double sum = 0.0;
  for (std::size_t i = 3; i < components_.size(); i += 4) sum += components_[i];
  return sum / 255.0;
}

double alphaDistance(const Picture& a, const Picture& b) {
  int sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) sum += std::abs(a.at(x, y).alpha - b.at(x, y).alpha);
  }
  return sum / 255.0;
}

std::uint32_t pixelsPerMeter(const std::string& png) {
  const std::size_t chunk = png.find("pHYs");
  constexpr std::size_t length = 9;  // the horizontal and the vertical resolution, and the unit
  if (chunk == std::string::npos || chunk + 4 + length > png.size()) return 0;
  const auto byte = [&](std::size_t i) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(png[chunk + 4 + i]));
  };
  const auto number = [&](std::size_t i) {
    return byte(i) << 24U | byte(i + 1) << 16U | byte(i + 2) << 8U | byte(i + 3);
  };
  constexpr std::uint32_t meter = 1;
  EXPECT_EQ(number(0), number(4));
  EXPECT_EQ(byte(8), meter);
  return number(0);
}

}  // namespace lumowatt
