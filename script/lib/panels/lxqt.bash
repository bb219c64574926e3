# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="LXQt: panel with the Status Notifier plugin"
needs=("lxqt-panel /usr/bin/lxqt-panel" "lxqt-themes /usr/share/lxqt/themes/light/lxqt-panel.qss"
  "adwaita-icon-theme /usr/share/icons/Adwaita/index.theme"
  "xdg-desktop-portal-gtk /usr/libexec/xdg-desktop-portal-gtk"
  "xdg-desktop-portal /usr/libexec/xdg-desktop-portal" "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons="3"
bar_top=0
bar_height=32

# shellcheck source=script/lib/settings-file.bash
source script/lib/settings-file.bash

prepare_panel() {
  mkdir -p "$XDG_CONFIG_HOME/lxqt"
  cat >"$XDG_CONFIG_HOME/lxqt/panel.conf" <<END
panels=panel1

[panel1]
alignment=-1
desktop=0
hidable=false
iconSize=22
lineCount=1
panelSize=$bar_height
plugins=statusnotifier
position=Top
width=100
width-percent=true

[statusnotifier]
alignment=Right
type=statusnotifier
END
}

open_panel() { # THEME
  begin_portal "$1"
  printf '[General]\ntheme=%s\nicon_theme=Adwaita\n\n[Qt]\nfont="Inter,10"\nstyle=Fusion\n' "$1" \
    >"$XDG_CONFIG_HOME/lxqt/lxqt.conf"
  launch env XDG_CURRENT_DESKTOP=LXQt QT_QPA_PLATFORMTHEME=lxqt XDG_CONFIG_DIRS=/etc/xdg \
    lxqt-panel
  panel=$!
  await "a tray in the panel" is_on_bus org.kde.StatusNotifierWatcher
}

close_panel() {
  stop "$panel"
  await "no tray without the panel" is_not_on_bus org.kde.StatusNotifierWatcher
  end_portal
}
