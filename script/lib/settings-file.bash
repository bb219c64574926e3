# shellcheck shell=bash disable=SC2154
#
# For panels whose settings are GSettings, which expect a system, or leave the color of icons to a
# portal's color scheme.

# Lets them read a file, in the form of the keyfile backend, from the standard input.
use_settings_file() {
  local folder=$XDG_CONFIG_HOME/glib-2.0/settings
  mkdir -p "$folder"
  cat >"$folder/keyfile"
  export GSETTINGS_BACKEND=keyfile
}

# Starts the portal that tells the desktop's color scheme: begin_portal light|dark.
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

# Starts a system bus with nothing on it, lest the machine's own is used.
begin_system_bus() {
  sed "s|path=$session/bus|path=$session/system-bus|; /servicedir/d" "$session/bus.conf" \
    >"$session/system-bus.conf"
  launch dbus-daemon --config-file="$session/system-bus.conf" --nofork --nopidfile
  await "a system bus" test -S "$session/system-bus"
  export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$session/system-bus
}
