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

/// A bitmap in memory, at most 32767 pixels wide and 32767 pixels high.
class CairoBitmap : public Bitmap {
 public:
  CairoBitmap(Size size, double scale, Appearance appearance);

  /// Fails if the bitmap is unusable: memory is short, the size is out of range, no font is
  /// installed, or drawing has failed.
  Result<> check() const;

  /// Returns the canvas of the bitmap. Its y grows upward. The bitmap is initially transparent.
  Canvas& canvas() { return canvas_; }
  std::optional<std::string> encodePng() override;

 private:
  double scale_;
  SurfacePointer surface_;
  ContextPointer cairo_;
  CairoCanvas canvas_;
};

}  // namespace lumowatt::cairo
