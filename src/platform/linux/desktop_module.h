#pragma once

#include "graphics/canvas.h"
#include "menubar/desktop.h"

/// Creates the desktop for the executable at the path `program` with its icons in the folder
/// `icons`. The caller owns the desktop. The desktop owns `bitmaps`, with which it renders the
/// pictures that it shows outside the panel. lumowatt-desktop.so exports only this function and the
/// version of the module. No exception leaves the module. The process exits if memory is exhausted.
extern "C" [[gnu::visibility("default")]] lumowatt::Desktop* lumowattDesktop(
    const char* program, const char* icons, lumowatt::BitmapFactory* bitmaps);
