#include "platform/macos/mac_desktop.h"

#import <ServiceManagement/ServiceManagement.h>

#include <ctime>
#include <utility>

#include "platform/macos/block_timer.h"
#include "platform/macos/power_sources.h"
#include "platform/macos/text.h"

namespace lumowatt::macos {

namespace {

/// Returns the shared application, without a Dock icon and without a menu bar.
NSApplication* makeAccessoryApplication() {
  NSApplication* const application = NSApplication.sharedApplication;
  [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
  return application;
}

}  // namespace

MacDesktop::MacDesktop()
    : application_(makeAccessoryApplication()),
      item_([NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength]),
      menu_([[NSMenu alloc] initWithTitle:@""]),
      button_(item_) {}

Result<> MacDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  delegate_ = [[LumowattApplicationDelegate alloc] initWithApplication:std::move(delegate)];
  application_.delegate = delegate_;
  // Without this activity, the system delays the timers of an idle application by seconds
  // ("App Nap").
  NSProcessInfo* const process = NSProcessInfo.processInfo;
  id<NSObject> const activity =
      [process beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                 reason:@"Shows the battery's present state"];
  [application_ run];
  [process endActivity:activity];
  return {};
}

// Status item

void MacDesktop::attachMenu(std::string_view autosaveName) {
  item_.autosaveName = toNSString(autosaveName);
  menu_.delegate = delegate_;
  item_.menu = menu_;
}

// Time and power

double MacDesktop::now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC_RAW, &time);  // on macOS this clock includes sleep
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::unique_ptr<Timer> MacDesktop::startTimer(double interval, std::function<void()> tick) {
  return std::make_unique<BlockTimer>(interval, std::move(tick));
}

void MacDesktop::watchPowerSources(std::function<void()> onChanged) {
  delegate_.powerSourceAction = ^{
    onChanged();
  };
  macos::watchPowerSources();
}

// Preferences

std::vector<std::optional<StoredPreference>> MacDesktop::preferences(
    const std::vector<std::string_view>& keys) {
  NSUserDefaults* const store = NSUserDefaults.standardUserDefaults;
  std::vector<std::optional<StoredPreference>> values;
  for (const std::string_view name : keys) {
    NSString* const key = toNSString(name);
    auto& value = values.emplace_back();
    if ([store objectForKey:key] == nil) continue;
    value = {.integer = [store integerForKey:key], .boolean = [store boolForKey:key] == YES};
  }
  return values;
}

void MacDesktop::setPreference(std::string_view key, PreferenceValue value) {
  NSUserDefaults* const store = NSUserDefaults.standardUserDefaults;
  if (const bool* const isOn = std::get_if<bool>(&value)) {
    [store setBool:*isOn forKey:toNSString(key)];
  } else {
    [store setInteger:static_cast<NSInteger>(std::get<std::int64_t>(value)) forKey:toNSString(key)];
  }
}

bool MacDesktop::reducesMotion() {
  return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
}

// Services

void MacDesktop::copyText(std::string_view text) {
  NSPasteboard* const pasteboard = NSPasteboard.generalPasteboard;
  [pasteboard clearContents];
  [pasteboard setString:toNSString(text) forType:NSPasteboardTypeString];
}

LoginItemStatus MacDesktop::loginItemStatus() {
  switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusEnabled:
      return LoginItemStatus::enabled;
    case SMAppServiceStatusRequiresApproval:
      return LoginItemStatus::requiresApproval;
    case SMAppServiceStatusNotFound:
      return LoginItemStatus::notFound;
    case SMAppServiceStatusNotRegistered:
      break;
  }
  return LoginItemStatus::notRegistered;
}

bool MacDesktop::setLoginItem(bool isRegistered) {
  SMAppService* const service = SMAppService.mainAppService;
  return isRegistered ? [service registerAndReturnError:nullptr]
                      : [service unregisterAndReturnError:nullptr];
}

void MacDesktop::beep() { NSBeep(); }

void MacDesktop::openBatterySettings() {
  NSURL* const url =
      [NSURL URLWithString:@"x-apple.systempreferences:com.apple.Battery-Settings.extension"];
  if (url != nil) [NSWorkspace.sharedWorkspace openURL:url];
}

}  // namespace lumowatt::macos
