#include "platform/macos/menu_bar/item_button.h"

#include "platform/macos/drawing/images.h"
#include "platform/macos/drawing/styled_text.h"
#include "platform/macos/text.h"

namespace lumowatt::macos {

void ItemButton::setImage(const std::optional<Image>& image) {
  item_.button.image = image ? makeImage(*image) : nil;
}

void ItemButton::setImageLeading() { item_.button.imagePosition = NSImageLeading; }

void ItemButton::setTitle(std::string_view title) { item_.button.title = toNSString(title); }

void ItemButton::setAttributedTitle(const AttributedString& title) {
  item_.button.attributedTitle = makeAttributedString(title);
}

void ItemButton::setToolTip(std::string_view text) { item_.button.toolTip = toNSString(text); }

void ItemButton::setAccessibilityLabel(std::string_view text) {
  item_.button.accessibilityLabel = toNSString(text);
}

}  // namespace lumowatt::macos
