# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="swaybar, with the menu in fuzzel"
needs=("sway /usr/bin/sway" "fuzzel /usr/bin/fuzzel"
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

# Checks that both buttons open the menu in a launcher, where the first letters select a line.
check_more() {
  open_panel dark
  WAYLAND_DISPLAY=$(wayland_display)
  export WAYLAND_DISPLAY
  point_away
  capture_still_screen bare
  begin_item
  if check "dark: it is drawn" is_item_drawn; then
    capture_still_screen state
    find_item state
    open_menu_by 1 dark && record_menu dark-launcher "dark, menu in fuzzel"
    focus_sway
    xdotool type Colors
    xdotool key Return
    check "dark: Colors in the launcher turns them off" prefers color=false || true
    open_menu_by 3 dark || true
    xdotool key Escape
    check "dark: the launcher closes" is_menu_closed || true
  fi
  stop "$item"
  unset WAYLAND_DISPLAY
  close_panel
}

focus_sway() { xdotool search --onlyvisible --class sway windowfocus || true; }
