#!/usr/bin/env bash
# What the item costs that stays in the panel, beside the other battery monitors that are installed:
#
#   benchmarks/resident.sh [SECONDS [PANEL]]
#
# All of them run at the same time over a copy of one laptop's power-supply folder, which is mounted
# over this machine's own in a private namespace, on private buses and a screen in memory, first idle
# and then with the charger in. The panel is one that shows the title as an icon of its own; with
# another name of a process, such as gnome-shell, as a label. The program is the release build's, or
# $LUMOWATT. Needs the packages dbus, xvfb and upower.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
panel=${2:-panel-1-systray}
machine=$PWD/tests/fixtures/linux/01-thinkpad-lnv45n1-discharging/class/power_supply

export LUMOWATT=${LUMOWATT:-$PWD/build/release/lumowatt}

if [[ ${LUMOWATT_BENCHMARK:-} != inside ]]; then
  missing=()
  for command in upower Xvfb dbus-daemon; do
    command -v "$command" >/dev/null || missing+=("$command")
  done
  if [[ ${#missing[@]} -gt 0 ]]; then
    echo "Missing: ${missing[*]}. On Debian: apt-get install upower xvfb dbus" >&2
    exit 1
  fi
  script/build release lumowatt
  script/build release resident
  sync # pages of a file that is still to be written count as dirty
  namespace=(unshare --mount)
  [[ $(id -u) -eq 0 ]] || namespace+=(--map-root-user)
  LUMOWATT_BENCHMARK=inside exec "${namespace[@]}" "$0" "$seconds" "$panel"
fi

scratch=$(mktemp -d)
pids=()
finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$scratch"
}
trap finish EXIT
supplies=/sys/class/power_supply
mount -t tmpfs none $supplies # in memory, as the kernel's is: nobody is to wait for a disk
cp -r "$machine/." $supplies

export HOME=$scratch XDG_CONFIG_HOME=$scratch/config XDG_RUNTIME_DIR=$scratch NO_AT_BRIDGE=1
for bus in session system; do
  dbus-daemon --session --nofork --address="unix:path=$scratch/$bus" 2>"$scratch/$bus.log" &
  pids+=($!)
done
export DBUS_SESSION_BUS_ADDRESS=unix:path=$scratch/session
export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$scratch/system
Xvfb -displayfd 3 -screen 0 800x600x24 3>"$scratch/display" 2>"$scratch/screen.log" &
pids+=($!)
until [[ -S $scratch/session && -S $scratch/system && -s $scratch/display ]]; do sleep 0.1; done
DISPLAY=:$(<"$scratch/display")
export DISPLAY
/usr/libexec/upowerd >"$scratch/upowerd.log" 2>&1 &
pids+=($!)
until upower -d 2>/dev/null | grep daemon-version >/dev/null; do
  kill -0 "${pids[-1]}" # it ended: so does this
  sleep 0.1
done

programs=("$LUMOWATT")
for monitor in cbatticon "xfce4-power-manager --no-daemon" "mate-power-manager --no-daemon" \
  lxqt-powermanagement; do
  if command -v "${monitor%% *}" >/dev/null; then programs+=("$monitor"); fi
done
build/release/resident "$seconds" "$panel" \
  "echo 1 >$supplies/AC/online; echo Charging >$supplies/BAT0/status" "${programs[@]}"
