#pragma once

#import <AppKit/AppKit.h>

#include <string>

#include "graphics/image.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Makes the symbol in its tint and size, described to screen readers. Falls back to the
/// unstyled symbol if AppKit cannot style it. Returns nil if the symbol is unknown to the system.
NSImage* _Nullable makeSymbol(const Symbol& symbol, const std::string& description);

/// Makes the symbol in its tint and size. Returns nil if the symbol is unknown to the system, or if
/// AppKit cannot style it.
NSImage* _Nullable makeStyledSymbol(const Symbol& symbol);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
