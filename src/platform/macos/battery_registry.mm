#include "platform/macos/battery_registry.h"

#import <Foundation/Foundation.h>
#import <IOKit/IOKitLib.h>

#include <cstdint>
#include <utility>

#include "platform/macos/text.h"

namespace lumowatt::macos {

namespace {

bool isString(id object) { return CFGetTypeID((__bridge CFTypeRef)object) == CFStringGetTypeID(); }

PropertyValue makeValue(id object);

/// Converts the dictionary. Returns a default `PropertyValue` if a key is not a string.
PropertyValue makeDictionary(NSDictionary<id, id>* dictionary) {
  PropertyDictionary result;
  for (id key in dictionary) {
    if (!isString(key)) return {};
    result.set(toString(key), makeValue(dictionary[key]));
  }
  return PropertyValue::dictionary(std::move(result));
}

PropertyValue makeValue(id object) {
  const CFTypeID type = CFGetTypeID((__bridge CFTypeRef)object);
  if (type == CFNumberGetTypeID() || type == CFBooleanGetTypeID()) {
    NSNumber* const number = object;
    return PropertyValue::number(static_cast<std::int64_t>(number.unsignedLongLongValue));
  }
  if (type == CFStringGetTypeID()) return PropertyValue::text(toString(object));
  if (type == CFDictionaryGetTypeID()) return makeDictionary(object);
  return {};
}

/// Handle of the battery's service, released on destruction; IO_OBJECT_NULL if there is no battery.
class Service {
 public:
  Service() = default;
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  ~Service() {
    if (handle != IO_OBJECT_NULL) IOObjectRelease(handle);
  }

  const io_service_t handle =
      IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching("AppleSmartBattery"));
};

/// Returns a copy of the service's properties, which the caller must release; null on failure.
CFMutableDictionaryRef copyProperties(io_service_t service) {
  CFMutableDictionaryRef properties = nullptr;
  const kern_return_t status =
      IORegistryEntryCreateCFProperties(service, &properties, kCFAllocatorDefault, 0);
  if (status == KERN_SUCCESS) return properties;
  if (properties != nullptr) CFRelease(properties);
  return nullptr;
}

}  // namespace

std::optional<PropertyDictionary> BatteryRegistry::properties() {
  @autoreleasepool {
    const Service service;
    if (service.handle == IO_OBJECT_NULL) return std::nullopt;
    id const copy = (__bridge_transfer id)copyProperties(service.handle);
    if (copy == nil) return std::nullopt;
    const PropertyValue value = makeValue(copy);
    const PropertyDictionary* const dictionary = value.asDictionary();
    return dictionary != nullptr ? std::optional(*dictionary) : std::nullopt;
  }
}

}  // namespace lumowatt::macos
