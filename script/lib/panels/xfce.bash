# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="Xfce: panel with the Status Tray plugin"
needs=("xfce4-panel /usr/bin/xfce4-panel"
  "xfconf /usr/share/dbus-1/services/org.xfce.Xfconf.service"
  "xdotool /usr/bin/xdotool"
  "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons="1 3"
bar_top=0
bar_height=30
starts=20

prepare_panel() { begin_xfce_settings; }

open_panel() { # THEME
  local -A names=([light]=Adwaita [dark]=Adwaita:dark)
  begin_panel "${names[$1]}"
}

close_panel() { end_panel; }

# Checks how often a panel that knows other items draws the glyph and the title when they are new to
# the panel. The panel then writes its list of known items while the second item is registered.
check_more() {
  local start drawn=0 half=0
  for ((start = 1; start <= starts; ++start)); do
    reset_known_items
    open_panel dark
    begin_item
    if are_drawn_soon 2; then
      drawn=$((drawn + 1))
    else
      ! are_drawn 1 || half=$((half + 1))
      capture_screen lost
      convert "$session/lost.miff" -crop "200x30+1080+0" +repage -sample 200% "$folder/lost.png"
    fi
    stop "$item"
    close_panel
  done
  if ((drawn == starts)); then
    note passed "new to a panel that knows other items: drawn $drawn of $starts times"
  else
    note failed "new to a panel that knows other items" "drawn $drawn of $starts times, one of the two \
$half times; it canceled $(grep -c 'known-items.*canceled' "$session/log") writes of its list itself"
    add_result "$folder" picture dark lost.png "dark, new to a panel that knows other items"
  fi
}

are_drawn_soon() { # COUNT
  local deadline=$((SECONDS + 6))
  until are_drawn "$1"; do
    ((SECONDS < deadline)) || return 1
    sleep 0.2
  done
}
