#include "platform/cairo/cairo_bitmap.h"

#include "platform/cairo/png.h"

namespace lumowatt::cairo {

namespace {

/// Returns a length in whole pixels, or -1 if it is out of range. Cairo rejects a negative size.
int pixels(double points, double scale) {
  const double count = points * scale;
  return count >= 1.0 && count <= 32767.0 ? static_cast<int>(count) : -1;
}

}  // namespace

CairoBitmap::CairoBitmap(Size size, double scale, Appearance appearance)
    : scale_(scale),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels(size.width, scale),
                                          pixels(size.height, scale))),
      cairo_(cairo_create(surface_.get())),
      canvas_(cairo_.get(), appearance) {
  cairo_scale(cairo_.get(), scale, -scale);
  cairo_translate(cairo_.get(), 0.0, -size.height);
}

Result<> CairoBitmap::check() const {
  if (!canvas_.hasFonts()) return Failure{"no font is installed"};
  const cairo_status_t status = cairo_status(cairo_.get());
  return status == CAIRO_STATUS_SUCCESS ? Result<>() : Failure{cairo_status_to_string(status)};
}

std::optional<std::string> CairoBitmap::encodePng() {
  if (!check()) return std::nullopt;
  cairo_surface_t* const surface = surface_.get();
  cairo_surface_flush(surface);
  return cairo::encodePng({.width = cairo_image_surface_get_width(surface),
                           .height = cairo_image_surface_get_height(surface),
                           .stride = cairo_image_surface_get_stride(surface),
                           .data = cairo_image_surface_get_data(surface)},
                          72.0 * scale_);
}

}  // namespace lumowatt::cairo
