#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "graphics/canvas.h"
#include "menubar/desktop.h"
#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/tray/panel_button.h"
#include "platform/freedesktop/user/autostart_folder.h"
#include "platform/freedesktop/user/clipboard.h"
#include "platform/freedesktop/user/login_item.h"
#include "platform/freedesktop/user/picture_viewer.h"
#include "platform/freedesktop/user/preference_file.h"
#include "platform/freedesktop/user/settings_portal.h"

namespace lumowatt::freedesktop {

/// The desktop of a session with a bus: its panel, and the user's files and programs. A
/// subclass adds the system's reports of power sources.
class SessionDesktop : public Desktop {
 public:
  /// For the executable at the path `program`, with its icons in the folder `icons`. What has to be
  /// drawn is drawn on the bitmaps.
  SessionDesktop(const std::string& program, std::string icons,
                 std::unique_ptr<BitmapFactory> bitmaps);

  /// Ends at once, and well, when there is such an item in this session already.
  Result<> run(std::shared_ptr<ApplicationDelegate> delegate) override;

  StatusButton* button() override { return button_ ? &*button_ : nullptr; }
  void attachMenu(std::string_view autosaveName) override { button_->attachMenu(autosaveName); }

  double now() override;
  std::unique_ptr<Timer> startTimer(double interval, std::function<void()> tick) override;

  std::vector<std::optional<StoredPreference>> preferences(
      const std::vector<std::string_view>& keys) override {
    return preferences_.read(keys);
  }
  void setPreference(std::string_view key, PreferenceValue value) override;
  bool reducesMotion() override { return settings_ && settings_->reducesMotion(); }

  void copyText(std::string_view text) override;
  LoginItemStatus loginItemStatus() override;
  bool setLoginItem(bool isRegistered) override;
  void beep() override;
  void openBatterySettings() override;

 protected:
  sd_event* loop() const { return loop_.get(); }

  /// An action of the application's, after which the menu follows the item.
  std::function<void()> followed(std::function<void()> action);

 private:
  /// Connects to the session, as the one process in it that shows the item. False when there is
  /// another.
  Result<bool> connect();
  void setInk();
  void choose(const Choice& choice);
  void showChart();

  std::string icons_;
  std::unique_ptr<BitmapFactory> bitmaps_;
  PreferenceFile preferences_;
  LoginItem loginItem_;
  std::shared_ptr<ApplicationDelegate> application_;  // while it runs
  EventLoop loop_;
  Bus bus_;
  std::optional<AutostartFolder> autostart_;
  std::optional<Clipboard> clipboard_;
  std::optional<PictureViewer> viewer_;
  std::optional<SettingsPortal> settings_;
  std::optional<PanelButton> button_;
};

}  // namespace lumowatt::freedesktop
