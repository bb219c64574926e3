#pragma once

#include "graphics/canvas.h"

namespace lumowatt::desktop {

/// Draws a picture into a file of the session's and opens it in the desktop's picture viewer, in a
/// process of its own: so that this one stays as small as it is, and does not wait. When that fails
/// the bell sounds, and the reason is on the standard error.
void showPicture(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps);

}  // namespace lumowatt::desktop
