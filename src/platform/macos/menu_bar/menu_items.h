#pragma once

#import <AppKit/AppKit.h>

#include "menubar/menu.h"

NS_ASSUME_NONNULL_BEGIN

/// What the items of the menu call when they are chosen.
@protocol LumowattMenuTarget <NSObject>
- (void)choose:(NSMenuItem*)sender;
@end

namespace lumowatt::macos {

/// Puts the items into the menu, in place of those that are in it.
void fillMenu(NSMenu* menu, const Menu& items, id<LumowattMenuTarget> target);

/// The choice that such an item offers.
Choice choiceOf(NSMenuItem* item);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
