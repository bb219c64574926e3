// Declarations of the parts of the I/O Kit's power source functions that the program uses, written
// from Apple's reference.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

typedef void (*IOPowerSourceCallbackType)(void* context);

CFRunLoopSourceRef IOPSNotificationCreateRunLoopSource(IOPowerSourceCallbackType callback,
                                                       void* context);
}
