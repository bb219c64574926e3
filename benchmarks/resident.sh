#!/usr/bin/env bash
# Measures the running item, compared with the other installed battery monitors:
#
#   benchmarks/resident.sh [SECONDS [PANEL]]
#
# All programs run at the same time, on private buses and a virtual screen. They read a copy of a
# laptop's power-supply folder, mounted over this machine's power-supply folder in a private mount
# namespace. They are measured first on battery power and then while charging. PANEL is the process
# name of the panel. With the default, the item shows its title as a separate icon; with another
# name, such as gnome-shell, as a label. $LUMOWATT is the path of the measured program (default: the
# release build). Needs the packages dbus, xvfb and upower. If strace is installed, also counts the
# files that a refresh opens.
set -euo pipefail
cd "$(dirname "$0")/.."

# shellcheck source=benchmarks/laptop.bash
source benchmarks/laptop.bash

seconds=${1:-60}
panel=${2:-panel-1-systray}
for command in upower Xvfb dbus-daemon; do
  if ! has "$command"; then
    echo "Missing: $command. On Debian: apt-get install upower xvfb dbus" >&2
    exit 1
  fi
done
begin_laptop resident "$seconds" "$panel"

begin_bus session
export DBUS_SESSION_BUS_ADDRESS=unix:path=$scratch/session
begin_upower # without a battery: with a battery, xfce4-power-manager aborts on a virtual screen
# Without GLX, because the first GTK program on a screen loads OpenGL, which needs about 50 MiB
# with software rendering. On a real desktop, another program has already loaded OpenGL.
Xvfb -displayfd 3 -screen 0 800x600x24 -extension GLX 3>"$scratch/display" 2>"$scratch/screen.log" &
pids+=($!)
until [[ -s $scratch/display ]]; do sleep 0.1; done
DISPLAY=:$(<"$scratch/display")
export DISPLAY NO_AT_BRIDGE=1

programs=("$LUMOWATT")
for monitor in cbatticon "xfce4-power-manager --no-daemon" "mate-power-manager --no-daemon" \
  lxqt-powermanagement; do
  if has "${monitor%% *}"; then programs+=("$monitor"); fi
done
if has strace; then
  strace -f -e trace=open,openat,openat2 -o "$scratch/opens" timeout 26 "$LUMOWATT" \
    >"$scratch/log" 2>&1 || true
  # Each refresh starts by opening the power-supply folder. The last complete refresh is counted,
  # because the first refreshes belong to the start and the last refresh may be incomplete.
  awk -v first="\"$supplies\"" '
    index($0, first) { opens = count; count = 0 }
    { ++count }
    END { printf "A refresh opens %d files, including missing ones.\n", opens }
  ' "$scratch/opens"
fi

build/release/resident "$seconds" "$panel" \
  "echo 1 >$supplies/AC/online; echo Charging >$supplies/BAT0/status" "${programs[@]}"
