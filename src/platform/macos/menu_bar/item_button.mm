#include "platform/macos/menu_bar/item_button.h"

#include "platform/macos/drawing/images.h"
#include "platform/macos/drawing/styled_text.h"
#include "platform/macos/text.h"

namespace lumowatt::macos {

void ItemButton::show(ButtonContents contents) {
  setImage(contents.image);
  NSStatusBarButton* const button = item_.button;
  button.imagePosition = NSImageLeading;
  button.attributedTitle = makeAttributedString(contents.title.text);
  button.toolTip = toNSString(contents.toolTip);
  button.accessibilityLabel = toNSString(contents.accessibilityLabel);
}

void ItemButton::setImage(const std::optional<Image>& image) {
  item_.button.image = image ? makeImage(*image) : nil;
}

void ItemButton::setTitle(std::string_view title) { item_.button.title = toNSString(title); }

}  // namespace lumowatt::macos
