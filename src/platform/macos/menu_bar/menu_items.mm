#include "platform/macos/menu_bar/menu_items.h"

#include "platform/macos/drawing/app_kit_canvas.h"
#include "platform/macos/drawing/images.h"
#include "platform/macos/drawing/styled_text.h"
#include "platform/macos/text.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

namespace {

SEL _Nullable selectorFor(Action action) {
  switch (action) {
    case Action::pick:
      return @selector(pick:);
    case Action::toggleColor:
      return @selector(toggleColor);
    case Action::toggleAnimate:
      return @selector(toggleAnimate);
    case Action::copyDetails:
      return @selector(copyDetails);
    case Action::toggleLogin:
      return @selector(toggleLogin);
    case Action::openSettings:
      return @selector(openSettings);
    case Action::terminate:
      return @selector(terminate:);
    case Action::none:
      break;
  }
  return nullptr;
}

NSView* makeView(const ItemView& view) {
  NSImageView* const content = [[NSImageView alloc] initWithFrame:makeRect(view.content.frame)];
  content.image = makeImage(view.content.image);
  content.imageScaling = NSImageScaleNone;
  NSView* const container = [[NSView alloc] initWithFrame:makeRect(view.frame)];
  [container addSubview:content];
  return container;
}

NSMenuItem* makeItem(const MenuItem& item, id<LumowattMenuActions> target) {
  if (item.isSeparator) return [NSMenuItem separatorItem];
  NSMenuItem* const result = [[NSMenuItem alloc] initWithTitle:toNSString(item.title)
                                                        action:selectorFor(item.action)
                                                 keyEquivalent:toNSString(item.keyEquivalent)];
  if (item.attributedTitle) result.attributedTitle = makeAttributedString(*item.attributedTitle);
  // Without a target, the action finds the application.
  if (item.action != Action::none && item.action != Action::terminate) result.target = target;
  result.tag = item.tag;
  result.state = item.isOn ? NSControlStateValueOn : NSControlStateValueOff;
  result.enabled = item.isEnabled;
  if (!item.submenu.empty()) {
    NSMenu* const submenu = [[NSMenu alloc] initWithTitle:result.title];
    fillMenu(submenu, item.submenu, target);
    result.submenu = submenu;
  }
  if (item.view) result.view = makeView(*item.view);
  return result;
}

}  // namespace

void fillMenu(NSMenu* menu, const Menu& items, id<LumowattMenuActions> target) {
  [menu removeAllItems];
  for (const MenuItem& item : items) [menu addItem:makeItem(item, target)];
}

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
