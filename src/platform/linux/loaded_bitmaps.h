#pragma once

#include "graphics/canvas.h"

namespace lumowatt {

/// The bitmaps of the drawing module, which is loaded for the first of them. When it cannot be
/// loaded, no bitmap can be made.
class LoadedBitmaps : public BitmapFactory {
 public:
  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override;

 private:
  BitmapFactory* factory_ = nullptr;
};

}  // namespace lumowatt
