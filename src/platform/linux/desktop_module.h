#pragma once

#include "graphics/canvas.h"
#include "menubar/desktop.h"

/// What lumowatt-desktop.so exports beside its version: makes the desktop, for the executable at
/// the path `program` with its icons in the folder `icons`. It is the caller's, and the bitmaps, on
/// which it draws what it shows outside of the panel, become its own. Nothing is thrown out of the
/// module: the end of the memory ends the process.
extern "C" [[gnu::visibility("default")]] lumowatt::Desktop* lumowattDesktop(
    const char* program, const char* icons, lumowatt::BitmapFactory* bitmaps);
