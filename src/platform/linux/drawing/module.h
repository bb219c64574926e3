#pragma once

#include "graphics/canvas.h"

/// The one thing that lumowatt-drawing.so exports: its bitmaps, on Cairo and Pango. The factory
/// lives as long as the process. Nothing in the module throws.
extern "C" [[gnu::visibility("default")]] lumowatt::BitmapFactory* lumowattBitmapFactory();
