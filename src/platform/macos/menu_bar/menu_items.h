#pragma once

#import <AppKit/AppKit.h>

#include "menubar/menu.h"

NS_ASSUME_NONNULL_BEGIN

/// What the items of the menu send to their target when they are chosen.
@protocol LumowattMenuActions <NSObject>
- (void)pick:(NSMenuItem*)sender;
- (void)toggleColor;
- (void)toggleAnimate;
- (void)copyDetails;
- (void)toggleLogin;
- (void)openSettings;
@end

namespace lumowatt::macos {

/// Puts the items into the menu, in place of those that are in it.
void fillMenu(NSMenu* menu, const Menu& items, id<LumowattMenuActions> target);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
