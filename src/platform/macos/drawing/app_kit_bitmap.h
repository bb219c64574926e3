#pragma once

#include "graphics/canvas.h"

namespace lumowatt::macos {

/// Renders drawings with AppKit. The constructor creates the shared application object, which fonts
/// and colors require, but does not run it.
class AppKitBitmapFactory : public BitmapFactory {
 public:
  AppKitBitmapFactory();

  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override;
};

}  // namespace lumowatt::macos
