#pragma once

#import <AppKit/AppKit.h>

#include "menubar/desktop.h"
#include "platform/macos/menu_bar/application_delegate.h"
#include "platform/macos/menu_bar/item_button.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Menu bar and system services of macOS. The constructor adds the item to the menu bar.
class MacDesktop : public Desktop {
 public:
  MacDesktop();

  /// Runs the event loop. Does not return when the user quits the application, because AppKit then
  /// exits the process.
  Result<> run(std::shared_ptr<ApplicationDelegate> delegate) override;

  StatusButton* _Nullable button() override { return button_.exists() ? &button_ : nullptr; }
  void attachMenu(std::string_view autosaveName) override;

  double now() override;
  std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) override;
  void watchPowerSources(std::function<void()> onChanged) override;

  std::vector<std::optional<StoredPreference>> preferences(
      const std::vector<std::string_view>& keys) override;
  void setPreference(std::string_view key, PreferenceValue value) override;
  bool reducesMotion() override;

  void copyText(std::string_view text) override;
  LoginItemStatus loginItemStatus() override;
  bool setLoginItem(bool isRegistered) override;
  void beep() override;
  void openBatterySettings() override;

 private:
  NSApplication* application_;
  NSStatusItem* item_;
  NSMenu* menu_;
  ItemButton button_;
  LumowattApplicationDelegate* _Nullable delegate_ = nil;
};

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
