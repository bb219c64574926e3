# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
service=/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service
name="MATE: panel with the indicator applet"
needs=("mate-panel /usr/bin/mate-panel"
  "mate-indicator-applet /usr/lib/mate-indicator-applet/mate-indicator-applet"
  "ayatana-indicator-application $service"
  "adwaita-icon-theme /usr/share/icons/Adwaita/index.theme"
  "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons=1 # the right button opens the menu of the panel
bar_top=0
bar_height=28

# shellcheck source=script/lib/settings-file.bash
source script/lib/settings-file.bash
# shellcheck source=script/lib/mate-session.bash
source script/lib/mate-session.bash

prepare_panel() {
  prepare_mate IndicatorAppletFactory::IndicatorApplet IndicatorAppletFactory
}

open_panel() { # THEME
  launch "$service"
  indicators=$!
  open_mate "$1"
}

close_panel() {
  close_mate
  stop "$indicators"
}
