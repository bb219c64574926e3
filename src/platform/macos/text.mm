#include "platform/macos/text.h"

namespace lumowatt::macos {

NSString* toNSString(std::string_view text) {
  NSString* const string = [[NSString alloc] initWithBytes:text.data()
                                                    length:text.size()
                                                  encoding:NSUTF8StringEncoding];
  return string != nil ? string : @"";
}

std::string toString(NSString* text) {
  const char* const bytes = text.UTF8String;
  if (bytes == nullptr) return {};
  return {bytes, [text lengthOfBytesUsingEncoding:NSUTF8StringEncoding]};
}

}  // namespace lumowatt::macos
