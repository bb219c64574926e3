#pragma once

#import <AppKit/AppKit.h>

#include "menubar/desktop.h"
#include "platform/macos/menu_bar/application_delegate.h"
#include "platform/macos/menu_bar/item_button.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// A Mac's menu bar, and the services of its system. The item is there when it is made.
class MacDesktop : public Desktop {
 public:
  MacDesktop();

  /// Returns when the event loop ends, as it never does by itself: quitting ends the process.
  Result<> run(std::shared_ptr<ApplicationDelegate> delegate) override;

  StatusButton* _Nullable button() override { return button_.exists() ? &button_ : nullptr; }
  void attachMenu(std::string_view autosaveName) override;

  double now() override;
  std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) override;
  void watchPowerSources(std::function<void()> changed) override;

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
