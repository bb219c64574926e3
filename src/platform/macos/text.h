#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Converts UTF-8 text to an NSString. Returns an empty string if the text is not valid UTF-8.
NSString* toNSString(std::string_view text);

/// Converts the string to UTF-8. Returns an empty string if `text` contains an unpaired surrogate.
std::string toString(NSString* text);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
