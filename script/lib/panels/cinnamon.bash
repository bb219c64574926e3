# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
watcher=/usr/libexec/xapps/sn-watcher/xapp-sn-watcher
name="Cinnamon: panel with the XApp status applet"
needs=("cinnamon /usr/bin/cinnamon" "xapp-sn-watcher $watcher"
  "libgl1-mesa-dri /usr/lib/*/dri/swrast_dri.so"
  "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(dark)
menu_buttons="1 3"
bar_top=920
bar_height=40
bar_left=700

# shellcheck source=script/lib/settings-file.bash
source script/lib/settings-file.bash

prepare_panel() {
  use_settings_file <<END
[org/cinnamon]
enabled-applets=['panel1:right:0:xapp-status@cinnamon.org:0']
panels-enabled=['1:0:bottom']
panels-height=['1:40']
desktop-effects=false
startup-animation=false
[org/cinnamon/desktop/interface]
enable-animations=false
END
  begin_system_bus
}

open_panel() {
  launch env XDG_CURRENT_DESKTOP=X-Cinnamon "$watcher"
  watching=$!
  launch env XDG_CURRENT_DESKTOP=X-Cinnamon LIBGL_ALWAYS_SOFTWARE=1 cinnamon --sm-disable
  panel=$!
  await "a tray in the panel" is_on_bus org.kde.StatusNotifierWatcher
  sleep 5
}

close_panel() {
  stop "$panel"
  stop "$watching"
}
