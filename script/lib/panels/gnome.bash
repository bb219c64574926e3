# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="GNOME Shell with the AppIndicator extension"
extension=ubuntu-appindicators@ubuntu.com
needs=("gnome-shell /usr/bin/gnome-shell"
  "gnome-shell-extension-appindicator /usr/share/gnome-shell/extensions/$extension/extension.js"
  "libgl1-mesa-dri /usr/lib/*/dri/swrast_dri.so"
  "fonts-cantarell /usr/share/fonts/*/cantarell/Cantarell-Regular.otf"
  "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(dark) # the only theme of GNOME's panel
menu_buttons="1 3"
bar_top=0
bar_height=32
bar_left=860 # right of the clock
screen_size=1366x768 # as on a small laptop
more_row=2           # with the submenus closed, counted from below
modes_row=3
colors_row=6 # with the submenu "More" open

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

reach_colors() { choose_line $more_row; }

# Checks that the entire menu fits below the bar with either of its submenus open. The required
# height is that of a screen of 720 px, which is 1080 px at a scale of 150 %.
check_more() {
  supply BAT0/status=Charging BAT0/power_now=28200000 BAT0/temp=312 AC/online=1 \
    AC/input_power_limit=65000000 # for the maximum number of lines in the report
  open_panel dark
  point_away
  capture_still_screen bare
  begin_item
  if check "it is drawn, charging" is_item_drawn; then
    fit_submenu $modes_row "Menu bar shows"
    fit_submenu $more_row "More"
  fi
  stop "$item"
  close_panel
}

fit_submenu() { # ROW TITLE
  open_menu_by 1 dark || return 0
  choose_line "$1" || true
  check "its menu fits the screen with \"$2\" open" is_menu_high_enough 500 688 || true
  record_menu "charging-$1" "charging, with \"$2\" open"
  check "the menu closes" is_menu_closed || true
}

is_menu_high_enough() { # LOWEST HIGHEST
  find_menu || return 1
  reason="it is $menu_height px high"
  ((menu_height >= $1 && menu_height <= $2))
}
