#include "platform/macos/menu_bar/menu_items.h"

#include <variant>

#include "platform/macos/drawing/app_kit_canvas.h"
#include "platform/macos/drawing/images.h"
#include "platform/macos/drawing/styled_text.h"
#include "platform/macos/text.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

namespace {

NSView* makeView(const ItemView& view) {
  NSImageView* const content = [[NSImageView alloc] initWithFrame:makeRect(view.content.frame)];
  content.image = makeImage(view.content.image);
  content.imageScaling = NSImageScaleNone;
  NSView* const container = [[NSView alloc] initWithFrame:makeRect(view.frame)];
  [container addSubview:content];
  return container;
}

NSMenuItem* makePlainItem(std::string_view title) {
  return [[NSMenuItem alloc] initWithTitle:toNSString(title) action:nullptr keyEquivalent:@""];
}

/// Makes the AppKit item for each kind of `MenuItem`.
struct ItemMaker {
  id<LumowattMenuTarget> target;

  NSMenuItem* operator()(const MenuSeparator&) const { return [NSMenuItem separatorItem]; }

  NSMenuItem* operator()(const MenuLine& line) const {
    NSMenuItem* const item = makePlainItem(line.title);
    if (line.attributedTitle) item.attributedTitle = makeAttributedString(*line.attributedTitle);
    item.enabled = NO;
    return item;
  }

  NSMenuItem* operator()(const MenuChart& chart) const {
    NSMenuItem* const item = makePlainItem("");
    item.view = makeView(chart.view);
    return item;
  }

  NSMenuItem* operator()(const MenuCommand& command) const {
    return makeChoice(command.title, command.choice, command.keyEquivalent, false);
  }

  NSMenuItem* operator()(const MenuCheckMark& mark) const {
    return makeChoice(mark.title, mark.choice, "", mark.isOn);
  }

  NSMenuItem* operator()(const MenuRadioMark& mark) const {
    return makeChoice(mark.title, mark.choice, "", mark.isOn);
  }

  NSMenuItem* operator()(const Submenu& submenu) const {
    NSMenuItem* const item = makePlainItem(submenu.title);
    item.submenu = [[NSMenu alloc] initWithTitle:item.title];
    for (const MenuItem& child : submenu.items) [item.submenu addItem:std::visit(*this, child)];
    return item;
  }

 private:
  NSMenuItem* makeChoice(std::string_view title, const Choice& choice, std::string_view key,
                         bool isOn) const {
    const bool hasTarget = choice.action != Action::terminate;
    NSMenuItem* const item =
        [[NSMenuItem alloc] initWithTitle:toNSString(title)
                                   action:hasTarget ? @selector(choose:) : @selector(terminate:)
                            keyEquivalent:toNSString(key)];
    // Without a target, AppKit sends the action to the application object.
    if (hasTarget) item.target = target;
    item.representedObject = @(static_cast<NSInteger>(choice.action));
    item.tag = choice.tag;
    item.state = isOn ? NSControlStateValueOn : NSControlStateValueOff;
    return item;
  }
};

}  // namespace

void fillMenu(NSMenu* menu, const Menu& items, id<LumowattMenuTarget> target) {
  [menu removeAllItems];
  for (const MenuItem& item : items) [menu addItem:std::visit(ItemMaker{target}, item)];
}

Choice choiceOf(NSMenuItem* item) {
  NSNumber* const action = item.representedObject;
  return {.action = static_cast<Action>(action.integerValue), .tag = item.tag};
}

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
