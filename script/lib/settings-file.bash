# shellcheck shell=bash disable=SC2154
#
# For panels whose settings are GSettings, and which expect a system.

# Lets them read a file, in the form of the keyfile backend, from the standard input.
use_settings_file() {
  local folder=$XDG_CONFIG_HOME/glib-2.0/settings
  mkdir -p "$folder"
  cat >"$folder/keyfile"
  export GSETTINGS_BACKEND=keyfile
}

# Starts a system bus with nothing on it, lest the machine's own is used.
begin_system_bus() {
  sed "s|path=$session/bus|path=$session/system-bus|; /servicedir/d" "$session/bus.conf" \
    >"$session/system-bus.conf"
  launch dbus-daemon --config-file="$session/system-bus.conf" --nofork --nopidfile
  await "a system bus" test -S "$session/system-bus"
  export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$session/system-bus
}
