#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// UTF-8 as a string of the system's; empty when it is not valid.
NSString* toNSString(std::string_view text);

/// The string as UTF-8; empty when it cannot be had as such (half of a surrogate pair).
std::string toString(NSString* text);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
