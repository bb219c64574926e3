// What this program uses of the I/O Kit's power sources, as their reference documents it.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

typedef void (*IOPowerSourceCallbackType)(void* context);

CFRunLoopSourceRef IOPSNotificationCreateRunLoopSource(IOPowerSourceCallbackType callback,
                                                       void* context);
}
