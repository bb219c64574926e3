# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="Xfce: panel with the Status Notifier plugin (sntray)"
needs=("xfce4-panel /usr/bin/xfce4-panel"
  "xfce4-sntray-plugin /usr/share/xfce4/panel/plugins/sntray.desktop"
  "xfconf /usr/share/dbus-1/services/org.xfce.Xfconf.service"
  "xdotool /usr/bin/xdotool"
  "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons=1 # the right button opens the menu of the panel
bar_top=0
bar_height=30

prepare_panel() {
  begin_xfce_settings
  xfconf-query -c xfce4-panel -p /plugins/plugin-2 -s sntray
}

open_panel() { # THEME
  local -A names=([light]=Adwaita [dark]=Adwaita:dark)
  begin_panel "${names[$1]}"
}

close_panel() { end_panel; }
