# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
service=/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service
name="Xfce: panel with the Indicator plugin"
needs=("xfce4-panel /usr/bin/xfce4-panel"
  "xfce4-indicator-plugin /usr/share/xfce4/panel/plugins/indicator.desktop"
  "ayatana-indicator-application $service"
  "xfconf /usr/share/dbus-1/services/org.xfce.Xfconf.service"
  "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons=1 # the panel does not pass the right button to the item
bar_top=0
bar_height=30

prepare_panel() {
  begin_xfce_settings
  xfconf-query -c xfce4-panel -p /plugins/plugin-2 -s indicator
}

open_panel() { # THEME
  local -A names=([light]=Adwaita [dark]=Adwaita:dark)
  launch "$service"
  indicators=$!
  begin_panel "${names[$1]}"
  sleep 2
}

close_panel() {
  stop "$panel"
  stop "$indicators"
}
