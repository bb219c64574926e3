#pragma once

#import <AppKit/AppKit.h>

#include "graphics/image.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// The image as one that a button or a view shows. Nil when it is a symbol that the system does not
/// know.
NSImage* _Nullable makeImage(const Image& image);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
