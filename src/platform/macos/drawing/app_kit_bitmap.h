#pragma once

#include "graphics/canvas.h"

namespace lumowatt::macos {

/// Bitmaps of AppKit's. It makes the shared application object, without which there are no fonts
/// and no colours, but does not run it.
class AppKitBitmapFactory : public BitmapFactory {
 public:
  AppKitBitmapFactory();

  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override;
};

}  // namespace lumowatt::macos
