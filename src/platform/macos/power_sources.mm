#include "platform/macos/power_sources.h"

#import <AppKit/AppKit.h>
#import <IOKit/ps/IOPowerSources.h>
#include <dispatch/dispatch.h>

#include "platform/macos/menu_bar/application_delegate.h"

namespace lumowatt::macos {

namespace {

void powerSourceChanged(void* /*context*/) {
  dispatch_async(dispatch_get_main_queue(), ^{
    @autoreleasepool {
      const id delegate = NSApplication.sharedApplication.delegate;
      if (![delegate isKindOfClass:LumowattApplicationDelegate.class]) return;
      LumowattApplicationDelegate* const own = delegate;
      if (own.powerSourceAction != nil) own.powerSourceAction();
    }
  });
}

/// The caller's to release. Null when changes cannot be told.
CFRunLoopSourceRef createSource() {
  return IOPSNotificationCreateRunLoopSource(&powerSourceChanged, nullptr);
}

}  // namespace

void watchPowerSources() {
  CFRunLoopSourceRef source = createSource();
  if (source == nullptr) return;
  CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode);
  CFRelease(source);  // the run loop keeps it
}

}  // namespace lumowatt::macos
