# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="MATE: panel with the notification area"
needs=("mate-panel /usr/bin/mate-panel" "adwaita-icon-theme /usr/share/icons/Adwaita/index.theme"
  "xdg-desktop-portal-gtk /usr/libexec/xdg-desktop-portal-gtk"
  "xdg-desktop-portal /usr/libexec/xdg-desktop-portal" "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons="3"
bar_top=0
bar_height=28

# shellcheck source=script/lib/settings-file.bash
source script/lib/settings-file.bash
# shellcheck source=script/lib/mate-session.bash
source script/lib/mate-session.bash

prepare_panel() {
  prepare_mate NotificationAreaAppletFactory::NotificationArea NotificationAreaAppletFactory
}

open_panel() { # THEME
  begin_portal "$1"
  open_mate "$1"
}

close_panel() {
  close_mate
  await "no tray without the panel" is_not_on_bus org.kde.StatusNotifierWatcher
  end_portal
}
