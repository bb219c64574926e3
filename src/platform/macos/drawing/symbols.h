#pragma once

#import <AppKit/AppKit.h>

#include <string>

#include "graphics/image.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// The symbol in its colour and size, for a screen reader with a description. One that cannot be
/// styled has neither. Nil when the system does not know it.
NSImage* _Nullable makeSymbol(const Symbol& symbol, const std::string& description);

/// The symbol in its colour and size. Nil when the system does not know it, or cannot style it.
NSImage* _Nullable makeStyledSymbol(const Symbol& symbol);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
