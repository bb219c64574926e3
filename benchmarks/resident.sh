#!/usr/bin/env bash
# What the item costs that stays in the panel, beside the other battery monitors that are installed:
#
#   benchmarks/resident.sh [SECONDS [PANEL]]
#
# All of them run at the same time over a copy of one laptop's power-supply folder, which is mounted
# over this machine's own in a private namespace, on private buses and a screen in memory, first idle
# and then with the charger in. The panel is one that shows the title as an icon of its own; with
# another name of a process, such as gnome-shell, as a label. The program is the release build's, or
# $LUMOWATT. Needs the packages dbus, xvfb and upower. Where strace is installed, it counts as well
# how many files a refresh opens.
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
begin_upower # without a battery: with one, xfce4-power-manager aborts on a screen in memory
# Without GLX: the first GTK program on a screen loads OpenGL, some 50 MiB where it renders in software.
# On a desktop another program has loaded it before.
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
  # Each refresh begins with the folder of supplies. The first ones belong to the start, the last may
  # not be whole.
  awk -v first="\"$supplies\"" '
    index($0, first) { opens = count; count = 0 }
    { ++count }
    END { printf "A refresh opens %d files, counting those that are not there.\n", opens }
  ' "$scratch/opens"
fi

build/release/resident "$seconds" "$panel" \
  "echo 1 >$supplies/AC/online; echo Charging >$supplies/BAT0/status" "${programs[@]}"
