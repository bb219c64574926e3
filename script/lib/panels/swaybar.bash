# shellcheck shell=bash disable=SC2034,SC2154 # script/lib/panel-tour uses and sets them
name="swaybar, which opens no menus"
needs=("sway /usr/bin/sway"
  "xdg-desktop-portal-gtk /usr/libexec/xdg-desktop-portal-gtk"
  "xdg-desktop-portal /usr/libexec/xdg-desktop-portal" "xdotool /usr/bin/xdotool"
  "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons=""
bar_top=0
bar_height=30

# shellcheck source=script/lib/sway-session.bash
source script/lib/sway-session.bash

# shellcheck source=script/lib/settings-file.bash
source script/lib/settings-file.bash

prepare_panel() { :; }

open_panel() { # THEME
  begin_portal "$1"
  local -A background=([light]="#f4f4f4" [dark]="#202428") text=([light]="#202020" [dark]="#ffffff")
  begin_sway "bar {
    position top
    height $bar_height
    workspace_buttons no
    tray_padding 4
    colors {
      background ${background[$1]}
      statusline ${text[$1]}
    }
  }"
  await "a tray in the panel" is_on_bus org.kde.StatusNotifierWatcher
}

close_panel() {
  end_sway
  await "no tray without the panel" is_not_on_bus org.kde.StatusNotifierWatcher
  end_portal
}
