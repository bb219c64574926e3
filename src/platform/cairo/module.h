#pragma once

#include "graphics/canvas.h"

/// Returns the factory of bitmaps drawn with Cairo and Pango, which exists until the process exits.
/// lumowatt-drawing.so exports only this function and the version of the module. No exception
/// leaves the module. The process exits if memory is exhausted, as it does in GLib.
extern "C" [[gnu::visibility("default")]] lumowatt::BitmapFactory* lumowattBitmapFactory();
