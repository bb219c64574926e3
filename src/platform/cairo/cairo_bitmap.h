#pragma once

#include <cairo.h>

#include <memory>

#include "graphics/canvas.h"
#include "platform/cairo/cairo_canvas.h"

namespace lumowatt::cairo {

struct SurfaceDestroyer {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePointer = std::unique_ptr<cairo_surface_t, SurfaceDestroyer>;

struct ContextDestroyer {
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using ContextPointer = std::unique_ptr<cairo_t, ContextDestroyer>;

/// A bitmap in memory. Larger than 32767 pixels in a direction it cannot be.
class CairoBitmap : public Bitmap {
 public:
  CairoBitmap(Size size, double scale, Appearance appearance);

  /// Fails when there is no bitmap: memory is short, the size out of range, or no font installed.
  Result<> check() const;

  /// The canvas, whose y grows upward. Transparent at first.
  Canvas& canvas() { return canvas_; }
  std::optional<std::string> encodePng() override;

 private:
  double scale_;
  SurfacePointer surface_;
  ContextPointer cairo_;
  CairoCanvas canvas_;
};

}  // namespace lumowatt::cairo
