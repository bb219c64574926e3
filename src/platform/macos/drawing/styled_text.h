#pragma once

#import <AppKit/AppKit.h>

#include "graphics/attributed_string.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Converts the color. A system color remains dynamic: AppKit resolves it when it draws.
NSColor* makeColor(const Color& color);

NSAttributedString* makeAttributedString(const AttributedString& text);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
