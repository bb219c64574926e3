#include "platform/macos/mac_desktop.h"

#import <ServiceManagement/ServiceManagement.h>

#include <ctime>
#include <utility>

#include "platform/macos/block_timer.h"
#include "platform/macos/power_sources.h"
#include "platform/macos/text.h"

namespace lumowatt::macos {

namespace {

/// Without a Dock icon and a menu bar of its own.
NSApplication* makeAccessory() {
  NSApplication* const application = NSApplication.sharedApplication;
  [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
  return application;
}

}  // namespace

MacDesktop::MacDesktop()
    : application_(makeAccessory()),
      item_([NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength]),
      menu_([[NSMenu alloc] initWithTitle:@""]),
      button_(item_) {}

std::optional<std::string> MacDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  delegate_ = [[LumowattApplicationDelegate alloc] initWithApplication:std::move(delegate)];
  application_.delegate = delegate_;
  [application_ run];
  return std::nullopt;
}

// The status item

void MacDesktop::setAutosaveName(std::string_view name) { item_.autosaveName = toNSString(name); }

void MacDesktop::attachMenu() {
  menu_.delegate = delegate_;
  item_.menu = menu_;
}

// Time and power

double MacDesktop::now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC_RAW, &time);  // on a Mac it goes on during sleep
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::unique_ptr<Timer> MacDesktop::startTimer(double interval, std::function<void()> tick) {
  return std::make_unique<BlockTimer>(interval, std::move(tick));
}

bool MacDesktop::watchPowerSources(std::function<void()> changed) {
  delegate_.powerSourceAction = ^{
    changed();
  };
  return macos::watchPowerSources();
}

// Preferences

bool MacDesktop::hasPreference(std::string_view key) {
  return [NSUserDefaults.standardUserDefaults objectForKey:toNSString(key)] != nil;
}

std::int64_t MacDesktop::integerPreference(std::string_view key) {
  return [NSUserDefaults.standardUserDefaults integerForKey:toNSString(key)];
}

bool MacDesktop::booleanPreference(std::string_view key) {
  return [NSUserDefaults.standardUserDefaults boolForKey:toNSString(key)];
}

void MacDesktop::setIntegerPreference(std::string_view key, std::int64_t value) {
  [NSUserDefaults.standardUserDefaults setInteger:static_cast<NSInteger>(value)
                                           forKey:toNSString(key)];
}

void MacDesktop::setBooleanPreference(std::string_view key, bool value) {
  [NSUserDefaults.standardUserDefaults setBool:value forKey:toNSString(key)];
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

bool MacDesktop::registerLoginItem() {
  return [SMAppService.mainAppService registerAndReturnError:nullptr];
}

bool MacDesktop::unregisterLoginItem() {
  return [SMAppService.mainAppService unregisterAndReturnError:nullptr];
}

void MacDesktop::beep() { NSBeep(); }

void MacDesktop::openBatterySettings() {
  NSURL* const url =
      [NSURL URLWithString:@"x-apple.systempreferences:com.apple.Battery-Settings.extension"];
  if (url != nil) [NSWorkspace.sharedWorkspace openURL:url];
}

}  // namespace lumowatt::macos
