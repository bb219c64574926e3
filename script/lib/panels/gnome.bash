# shellcheck shell=bash disable=SC2034,SC2154 # script/lib/panel-tour uses and sets them
name="GNOME Shell with the AppIndicator extension"
extension=ubuntu-appindicators@ubuntu.com
needs=("gnome-shell /usr/bin/gnome-shell"
  "gnome-shell-extension-appindicator /usr/share/gnome-shell/extensions/$extension/extension.js"
  "libgl1-mesa-dri /usr/lib/*/dri/swrast_dri.so"
  "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(dark) # the only one that GNOME's panel has
menu_buttons="1 3"
bar_top=0
bar_height=32
bar_left=800 # right of the clock

# shellcheck source=script/lib/settings-file.bash
source script/lib/settings-file.bash

prepare_panel() {
  use_settings_file <<END
[org/gnome/shell]
enabled-extensions=['$extension']
welcome-dialog-last-shown-version='99.0'
[org/gnome/desktop/interface]
enable-animations=false
[org/gnome/desktop/session]
idle-delay=uint32 0
[org/gnome/desktop/screensaver]
lock-enabled=false
END
  begin_system_bus
}

open_panel() {
  launch env GDK_BACKEND=x11 XDG_CURRENT_DESKTOP=GNOME LIBGL_ALWAYS_SOFTWARE=1 gnome-shell --x11
  panel=$!
  await "a tray in the panel" is_on_bus org.kde.StatusNotifierWatcher
  await "no overview, in which it starts" leave_overview
}

leave_overview() {
  local shell=org.gnome.Shell properties=org.freedesktop.DBus.Properties
  bus_call $shell /org/gnome/Shell $properties.Set $shell OverviewActive "<false>" &&
    sleep 2 &&
    [[ $(bus_call $shell /org/gnome/Shell $properties.Get $shell OverviewActive) == "(<false>,)" ]]
} >>"$session/log"

close_panel() {
  stop "$panel"
  await "no tray without the panel" is_not_on_bus org.kde.StatusNotifierWatcher
}
