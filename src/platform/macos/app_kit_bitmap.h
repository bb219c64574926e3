#pragma once

#include "graphics/canvas.h"

namespace lumowatt::macos {

/// Bitmaps of AppKit's. Making one makes the shared application object, which is not run.
class AppKitBitmapFactory : public BitmapFactory {
 public:
  std::unique_ptr<Bitmap> draw(const Drawing& picture, double scale,
                               Appearance appearance) override;
};

}  // namespace lumowatt::macos
