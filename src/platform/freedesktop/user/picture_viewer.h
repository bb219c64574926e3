#pragma once

#include "graphics/canvas.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Shows a picture in the desktop's picture viewer.
class PictureViewer {
 public:
  explicit PictureViewer(sd_event* loop) : loop_(loop) {}

  /// Draws the picture into a file in the session's runtime folder and opens that, in a process of
  /// its own: so that this one stays as small as it is, and does not wait. When it cannot be drawn,
  /// or no program started, the bell sounds, and the reason is on the standard error. Does nothing
  /// while one is being drawn.
  void show(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps);

 private:
  sd_event* loop_;
  EventSource drawing_;  // while a picture is being drawn
};

}  // namespace lumowatt::freedesktop
