#include "platform/macos/power_sources.h"

#import <AppKit/AppKit.h>
#import <IOKit/ps/IOPowerSources.h>
#include <dispatch/dispatch.h>

#include "platform/macos/menu_bar/application_delegate.h"

namespace lumowatt::macos {

namespace {

void onPowerSourceChanged(void* /*context*/) {
  dispatch_async(dispatch_get_main_queue(), ^{
    @autoreleasepool {
      const id delegate = NSApplication.sharedApplication.delegate;
      if (![delegate isKindOfClass:LumowattApplicationDelegate.class]) return;
      LumowattApplicationDelegate* const ownDelegate = delegate;
      if (ownDelegate.powerSourceAction != nil) ownDelegate.powerSourceAction();
    }
  });
}

/// Creates the run loop source that reports changes. The caller must release it. Returns null if
/// the system cannot report changes.
CFRunLoopSourceRef createSource() {
  return IOPSNotificationCreateRunLoopSource(&onPowerSourceChanged, nullptr);
}

}  // namespace

void watchPowerSources() {
  CFRunLoopSourceRef source = createSource();
  if (source == nullptr) return;
  CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode);
  CFRelease(source);  // the run loop retains the source
}

}  // namespace lumowatt::macos
