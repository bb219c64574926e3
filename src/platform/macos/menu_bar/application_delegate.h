#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "menubar/desktop.h"
#include "platform/macos/menu_bar/menu_items.h"

NS_ASSUME_NONNULL_BEGIN

/// The delegate of the application object and of the item's menu: it owns the application in the
/// menu bar, and tells it what happens.
@interface LumowattApplicationDelegate
    : NSObject <NSApplicationDelegate, NSMenuDelegate, LumowattMenuTarget>

- (instancetype)initWithApplication:(std::shared_ptr<lumowatt::ApplicationDelegate>)application;

/// What is done after a change of a power source; nil for nothing.
@property(copy, nullable) void (^powerSourceAction)(void);

@end

NS_ASSUME_NONNULL_END
