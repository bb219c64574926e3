#include "platform/cairo/png.h"

#include <png.h>

#include <cmath>
#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <vector>

namespace lumowatt::cairo {

namespace {

void append(png_structp png, png_bytep bytes, png_size_t count) {
  static_cast<std::string*>(png_get_io_ptr(png))
      ->append(reinterpret_cast<const char*>(bytes), count);
}

void flushNothing(png_structp) {}

/// Converts one row to PNG's order of components and divides the colors by alpha.
void convertRow(const Pixels& pixels, int y, std::vector<png_byte>& row) {
  const unsigned char* const source = pixels.data + static_cast<std::ptrdiff_t>(y) * pixels.stride;
  for (std::size_t x = 0; x < static_cast<std::size_t>(pixels.width); ++x) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, source + x * sizeof pixel, sizeof pixel);
    const std::uint32_t alpha = pixel >> 24U;
    const auto component = [pixel, alpha](unsigned shift) {
      const std::uint32_t value = (pixel >> shift) & 0xffU;
      return static_cast<png_byte>(alpha == 0 ? 0 : (value * 255U + alpha / 2) / alpha);
    };
    row[4 * x] = component(16);
    row[4 * x + 1] = component(8);
    row[4 * x + 2] = component(0);
    row[4 * x + 3] = static_cast<png_byte>(alpha);
  }
}

/// Writes the picture. Returns false on an error. libpng reports errors by a jump back to `setjmp`,
/// so no local variable may have a destructor.
bool write(png_structp png, png_infop info, const Pixels& pixels, double pixelsPerInch,
           std::vector<png_byte>& row) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  constexpr double metersPerInch = 0.0254;
  const auto resolution = static_cast<png_uint_32>(std::lround(pixelsPerInch / metersPerInch));
  png_set_IHDR(png, info, static_cast<png_uint_32>(pixels.width),
               static_cast<png_uint_32>(pixels.height), 8, PNG_COLOR_TYPE_RGB_ALPHA,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_pHYs(png, info, resolution, resolution, PNG_RESOLUTION_METER);
  // Filters suit photographs. For plain areas and text, they produce a larger file in more time.
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_write_info(png, info);
  for (int y = 0; y < pixels.height; ++y) {
    convertRow(pixels, y, row);
    png_write_row(png, row.data());
  }
  png_write_end(png, info);
  return true;
}

}  // namespace

std::optional<std::string> encodePng(const Pixels& pixels, double pixelsPerInch) {
  std::string file;
  std::vector<png_byte> row(static_cast<std::size_t>(pixels.width) * 4);
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
  if (png != nullptr) png_set_write_fn(png, &file, append, flushNothing);
  const bool written = info != nullptr && write(png, info, pixels, pixelsPerInch, row);
  png_destroy_write_struct(&png, &info);
  if (!written) return std::nullopt;
  return file;
}

}  // namespace lumowatt::cairo
