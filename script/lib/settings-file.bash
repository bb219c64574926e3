# shellcheck shell=bash disable=SC2154
#
# Functions for panels that store their settings in GSettings, need a system bus, or choose the
# color of icons by the color scheme of a portal.

# Makes GSettings use a file, which is read from the standard input in the keyfile backend's format.
use_settings_file() {
  local folder=$XDG_CONFIG_HOME/glib-2.0/settings
  mkdir -p "$folder"
  cat >"$folder/keyfile"
  export GSETTINGS_BACKEND=keyfile
}

# Starts a portal that provides the color scheme of the desktop: begin_portal light|dark.
begin_portal() {
  local settings=$XDG_CONFIG_HOME/glib-2.0/settings/keyfile
  [[ -e $settings ]] || use_settings_file </dev/null
  printf "\n[org/gnome/desktop/interface]\ncolor-scheme='prefer-%s'\n" "$1" >>"$settings"
  launch /usr/libexec/xdg-desktop-portal-gtk
  portal_backend=$!
  await "the portal's backend" is_on_bus org.freedesktop.impl.portal.desktop.gtk
  launch env XDG_CURRENT_DESKTOP=GNOME /usr/libexec/xdg-desktop-portal
  portal=$!
  await "a portal" is_on_bus org.freedesktop.portal.Desktop
}

end_portal() {
  stop "$portal"
  stop "$portal_backend"
}

# Starts an empty system bus, so that the panel does not connect to the system bus of the machine.
begin_system_bus() {
  sed "s|path=$session/bus|path=$session/system-bus|; /servicedir/d" "$session/bus.conf" \
    >"$session/system-bus.conf"
  launch dbus-daemon --config-file="$session/system-bus.conf" --nofork --nopidfile
  await "a system bus" test -S "$session/system-bus"
  export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$session/system-bus
}
