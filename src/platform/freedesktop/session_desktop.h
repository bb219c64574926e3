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

/// Desktop of a session with a session bus: the panel, and the user's files and programs. A
/// subclass provides the readings of power sources.
class SessionDesktop : public Desktop {
 public:
  /// `program` is the path of the executable, which the login item starts. `icons` is the folder of
  /// the icons. The picture of the chart is drawn on a bitmap from `bitmaps`.
  SessionDesktop(const std::string& program, std::string icons,
                 std::unique_ptr<BitmapFactory> bitmaps);

  /// Runs the event loop until the application exits. Returns success immediately if another
  /// process already shows the item in this session.
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

  /// Returns a function that calls `action` and then updates the rows of the closed menus.
  std::function<void()> withMenuUpdate(std::function<void()> action);

 private:
  /// Connects to the session bus and claims the application's name on the bus. Returns false if
  /// another process owns the name.
  Result<bool> connect();
  void updateInk();
  void choose(const Choice& choice);
  void showChart();

  std::string icons_;
  std::unique_ptr<BitmapFactory> bitmaps_;
  PreferenceFile preferences_;
  LoginItem loginItem_;
  std::shared_ptr<ApplicationDelegate> application_;  // only while `run` is running
  EventLoop loop_;
  Bus bus_;
  std::optional<AutostartFolder> autostart_;
  std::optional<Clipboard> clipboard_;
  std::optional<PictureViewer> viewer_;
  std::optional<SettingsPortal> settings_;
  std::optional<PanelButton> button_;
};

}  // namespace lumowatt::freedesktop
