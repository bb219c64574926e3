#pragma once

#import <AppKit/AppKit.h>

#include "menubar/desktop.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Button of an item in the menu bar.
class ItemButton : public StatusButton {
 public:
  explicit ItemButton(NSStatusItem* item) : item_(item) {}

  bool exists() const { return item_.button != nil; }

  void show(ButtonContents contents) override;
  void setImage(const std::optional<Image>& image) override;
  void setTitle(std::string_view title) override;

 private:
  NSStatusItem* item_;
};

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
