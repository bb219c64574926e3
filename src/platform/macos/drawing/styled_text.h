#pragma once

#import <AppKit/AppKit.h>

#include "graphics/attributed_string.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// A system colour stays one: it is resolved where it is drawn.
NSColor* makeColor(const Color& color);

NSAttributedString* makeAttributedString(const AttributedString& text);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
