#pragma once

#include "graphics/canvas.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Picture viewer of the desktop.
class PictureViewer {
 public:
  explicit PictureViewer(sd_event* loop) : loop_(loop) {}

  /// Draws the picture into a file in the session's runtime folder, and opens the file in a viewer.
  /// A child process does this, so that this process neither blocks nor uses more memory. If the
  /// picture cannot be drawn or no viewer can be started, rings the bell and reports the reason on
  /// the standard error. Does nothing while another picture is being drawn.
  void show(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps);

 private:
  sd_event* loop_;
  EventSource drawing_;  // watches the child process; null if no picture is being drawn
};

}  // namespace lumowatt::freedesktop
