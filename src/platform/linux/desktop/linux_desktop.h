#pragma once

#include <memory>
#include <optional>
#include <string>

#include "graphics/canvas.h"
#include "menubar/desktop.h"
#include "platform/linux/desktop/login_item.h"
#include "platform/linux/desktop/panel_button.h"
#include "platform/linux/desktop/picture_viewer.h"
#include "platform/linux/desktop/power_monitor.h"
#include "platform/linux/desktop/preference_file.h"
#include "platform/linux/desktop/sd.h"
#include "platform/linux/desktop/settings_portal.h"

namespace lumowatt::desktop {

/// A Linux desktop: the session bus with its panel, and the user's files and programs.
class LinuxDesktop : public Desktop {
 public:
  /// For the executable at the path `program`, with its icons in the folder `icons`. What has to be
  /// drawn is drawn on the bitmaps.
  LinuxDesktop(const std::string& program, std::string icons,
               std::unique_ptr<BitmapFactory> bitmaps);

  /// Ends at once, and well, when there is such an item in this session already.
  std::optional<std::string> run(std::shared_ptr<ApplicationDelegate> delegate) override;

  StatusButton* button() override { return button_ ? &*button_ : nullptr; }
  void setAutosaveName(std::string_view name) override;
  void attachMenu() override;

  double now() override;
  std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) override;
  bool watchPowerSources(std::function<void()> changed) override;

  bool hasPreference(std::string_view key) override { return preferences_.has(key); }
  std::int64_t integerPreference(std::string_view key) override {
    return preferences_.integer(key);
  }
  bool booleanPreference(std::string_view key) override { return preferences_.boolean(key); }
  void setIntegerPreference(std::string_view key, std::int64_t value) override;
  void setBooleanPreference(std::string_view key, bool value) override;
  bool reducesMotion() override { return settings_ && settings_->reducesMotion(); }

  void copyText(std::string_view text) override;
  LoginItemStatus loginItemStatus() override { return loginItem_.status(); }
  bool registerLoginItem() override { return loginItem_.add(); }
  bool unregisterLoginItem() override { return loginItem_.remove(); }
  void beep() override;
  void openBatterySettings() override;

 private:
  int connect();
  void choose(const MenuItem& item);
  std::function<void()> followed(std::function<void()> action);
  void setPreference(std::string_view key, std::string_view value);

  std::string icons_;
  std::unique_ptr<BitmapFactory> bitmaps_;
  PreferenceFile preferences_;
  LoginItem loginItem_;
  std::shared_ptr<ApplicationDelegate> application_;  // while it runs
  EventLoop loop_;
  Bus bus_;
  std::optional<SettingsPortal> settings_;
  std::optional<PanelButton> button_;
  std::optional<PowerMonitor> power_;
  PictureViewer viewer_;
};

}  // namespace lumowatt::desktop
