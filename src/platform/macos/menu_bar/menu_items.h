#pragma once

#import <AppKit/AppKit.h>

#include "menubar/menu.h"

NS_ASSUME_NONNULL_BEGIN

/// Receiver of the menu items' action.
@protocol LumowattMenuTarget <NSObject>
- (void)choose:(NSMenuItem*)sender;
@end

namespace lumowatt::macos {

/// Replaces all items of the menu. Each new item that can be chosen sends its action to `target`,
/// except the item that quits the application.
void fillMenu(NSMenu* menu, const Menu& items, id<LumowattMenuTarget> target);

/// Returns the choice that `fillMenu` stored in the item.
Choice choiceOf(NSMenuItem* item);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
