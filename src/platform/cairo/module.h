#pragma once

#include "graphics/canvas.h"

/// What lumowatt-drawing.so exports beside its version: its bitmaps, on Cairo and Pango. The
/// factory lives as long as the process. Nothing is thrown out of the module: the end of the memory
/// ends the process, as it does in GLib.
extern "C" [[gnu::visibility("default")]] lumowatt::BitmapFactory* lumowattBitmapFactory();
