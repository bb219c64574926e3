#pragma once

#include <sys/types.h>

#include "graphics/canvas.h"

namespace lumowatt::freedesktop {

/// Shows a picture in the desktop's picture viewer.
class PictureViewer {
 public:
  /// Draws the picture into a file in the session's runtime folder and opens that, in a process of
  /// its own: so that this one stays as small as it is, and does not wait. When that fails the bell
  /// sounds, and the reason is on the standard error. Does nothing while one is being drawn.
  void show(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps);

 private:
  pid_t child_ = 0;
};

}  // namespace lumowatt::freedesktop
