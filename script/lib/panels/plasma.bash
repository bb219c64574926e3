# shellcheck shell=bash disable=SC2034,SC2154 # panel-tour uses or sets these variables
name="KDE Plasma: panel with the system tray"
needs=("plasma-workspace /usr/bin/plasmashell" "plasma-desktop /usr/share/plasma/shells/org.kde.plasma.desktop"
  "kded5 /usr/bin/kded5" "xdotool /usr/bin/xdotool" "imagemagick /usr/bin/import")
themes=(light dark)
menu_buttons="1 3"
bar_top=916
bar_height=44
bar_left=900

# shellcheck source=script/lib/settings-file.bash
source script/lib/settings-file.bash

prepare_panel() {
  begin_system_bus
  write_layout
  launch "$(compgen -G '/usr/lib/*/libexec/kactivitymanagerd')"
  await "activities" is_on_bus org.kde.ActivityManager
}

# Writes the layout: a desktop of one color, and a panel along the bottom. The panel contains a gap
# and a system tray without items of its own.
write_layout() {
  local known
  known=$(basename --multiple /usr/share/plasma/plasmoids/* | paste -sd,)
  printf '[PlasmaViews][Panel 2][Defaults]\nthickness=%s\n' "$bar_height" \
    >"$XDG_CONFIG_HOME/plasmashellrc"
  cat >"$XDG_CONFIG_HOME/plasma-org.kde.plasma.desktop-appletsrc" <<END
[Containments][1]
activityId=
formfactor=0
immutability=1
lastScreen=0
location=0
plugin=org.kde.desktopcontainment
wallpaperplugin=org.kde.color

[Containments][1][Wallpaper][org.kde.color][General]
Color=80,88,96

[Containments][2]
activityId=
formfactor=2
immutability=1
lastScreen=0
location=4
plugin=org.kde.panel
wallpaperplugin=org.kde.image

[Containments][2][Applets][3]
immutability=1
plugin=org.kde.plasma.panelspacer

[Containments][2][Applets][4]
immutability=1
plugin=org.kde.plasma.systemtray

[Containments][2][Applets][4][Configuration]
SystrayContainmentId=5

[Containments][2][General]
AppletOrder=3;4

[Containments][5]
activityId=
formfactor=2
immutability=1
lastScreen=0
location=4
plugin=org.kde.plasma.private.systemtray
wallpaperplugin=org.kde.image

[Containments][5][General]
extraItems=
knownItems=$known
END
}

open_panel() { # THEME
  local -A schemes=([light]=BreezeLight [dark]=BreezeDark)
  printf '[Theme]\nname=breeze-%s\n' "$1" >"$XDG_CONFIG_HOME/plasmarc"
  {
    cat "/usr/share/color-schemes/${schemes[$1]}.colors"
    printf '\n[KDE]\nAnimationDurationFactor=0\nwidgetStyle=Breeze\n'
  } >"$XDG_CONFIG_HOME/kdeglobals"
  local -a kde=(env XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5
    QT_QUICK_BACKEND=software XDG_CONFIG_DIRS=/etc/xdg)
  launch "${kde[@]}" kded5
  modules=$!
  await "a watcher" is_on_bus org.kde.StatusNotifierWatcher
  launch "${kde[@]}" plasmashell --no-respawn
  panel=$!
  await "a tray in the panel" is_host_there
  sleep 5
}

is_host_there() {
  bus_call org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
    org.freedesktop.DBus.Properties.Get org.kde.StatusNotifierWatcher \
    IsStatusNotifierHostRegistered | grep -q true
}

close_panel() {
  stop "$panel"
  stop "$modules"
}
