#pragma once

#import <AppKit/AppKit.h>

#include "graphics/image.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Converts the image to an image for a button or a view. Returns nil if it is a symbol that is
/// unknown to the system.
NSImage* _Nullable makeImage(const Image& image);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
