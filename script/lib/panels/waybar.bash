# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="waybar, on sway"
needs=("sway /usr/bin/sway" "waybar /usr/bin/waybar" "xdotool /usr/bin/xdotool"
  "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons="1 3"
bar_top=0
bar_height=30

# shellcheck source=script/lib/sway-session.bash
source script/lib/sway-session.bash

prepare_panel() {
  mkdir -p "$XDG_CONFIG_HOME/waybar"
  cat >"$XDG_CONFIG_HOME/waybar/config" <<END
{ "layer": "top", "position": "top", "height": $bar_height, "modules-right": ["tray"],
  "tray": { "icon-size": 22, "spacing": 8 } }
END
}

open_panel() { # THEME
  local -A colors=([light]="background: #f4f4f4; color: #202020" [dark]="background: #202428; color: #fff")
  local -A gtk=([light]=Adwaita [dark]=Adwaita:dark)
  echo "window#waybar { ${colors[$1]}; } #tray { padding: 0 10px; }" >"$XDG_CONFIG_HOME/waybar/style.css"
  begin_sway ""
  launch env -u DISPLAY GDK_BACKEND=wayland GTK_THEME="${gtk[$1]}" \
    WAYLAND_DISPLAY="$(wayland_display)" waybar
  panel=$!
  await "a tray in the panel" is_on_bus org.kde.StatusNotifierWatcher
}

close_panel() {
  stop "$panel"
  end_sway
}

# The bar receives no key events.
dismiss_menu() {
  point_away
  click 1
}
