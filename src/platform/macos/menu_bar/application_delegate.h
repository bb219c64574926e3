#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "menubar/desktop.h"
#include "platform/macos/menu_bar/menu_items.h"

NS_ASSUME_NONNULL_BEGIN

/// Delegate of the application object and of the item's menu. It owns the portable application and
/// forwards AppKit's events to it.
@interface LumowattApplicationDelegate
    : NSObject <NSApplicationDelegate, NSMenuDelegate, LumowattMenuTarget>

- (instancetype)initWithApplication:(std::shared_ptr<lumowatt::ApplicationDelegate>)application;

/// Block that runs after each change of a power source; may be nil.
@property(copy, nullable) void (^powerSourceAction)(void);

@end

NS_ASSUME_NONNULL_END
