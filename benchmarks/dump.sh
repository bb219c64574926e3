#!/usr/bin/env bash
# What one reading costs, beside the other programs that are installed and read the same battery:
#
#   benchmarks/dump.sh [ROUNDS]
#
# All of them run in turns over one real laptop's power-supply folder, which is mounted over this
# machine's own in a private namespace. The program is the release build's, or $LUMOWATT.
set -euo pipefail
cd "$(dirname "$0")/.."

rounds=${1:-500}
machine=$PWD/tests/fixtures/linux/01-thinkpad-lnv45n1-discharging/class/power_supply

export LUMOWATT=${LUMOWATT:-$PWD/build/release/lumowatt}

has() { command -v "$1" >/dev/null; }

if [[ ${LUMOWATT_BENCHMARK:-} != inside ]]; then
  script/build release lumowatt
  script/build release interleave
  namespace=(unshare --mount)
  [[ $(id -u) -eq 0 ]] || namespace+=(--map-root-user)
  LUMOWATT_BENCHMARK=inside exec "${namespace[@]}" "$0" "$rounds"
fi

mount --bind "$machine" /sys/class/power_supply

scratch=$(mktemp -d)
pids=()
finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$scratch"
}
trap finish EXIT

interleave=$PWD/build/release/interleave
cd /sys/class/power_supply
contenders=("$LUMOWATT --dump" true "cat $(echo ./*/uevent)")
if has acpi; then contenders+=("acpi -b"); fi
if has i3status; then
  export HOME=$scratch # where it looks for what to show
  printf '%s\n' 'general { output_format = none }' 'order += "battery all"' \
    'battery all { format = "%percentage %consumption" }' >"$HOME/.i3status.conf"
  contenders+=("i3status --run-once")
fi
if has upower && has dbus-daemon; then
  # A system bus of our own, for its daemon. That finds no battery, because a mounted folder is no
  # device to udev; what its client takes is less than on a laptop, if anything.
  dbus-daemon --session --nofork --address="unix:path=$scratch/bus" 2>"$scratch/bus.log" &
  pids+=($!)
  export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$scratch/bus
  until [[ -S $scratch/bus ]]; do sleep 0.1; done
  /usr/libexec/upowerd >"$scratch/upowerd.log" 2>&1 &
  pids+=($!)
  until upower -d 2>/dev/null | grep daemon-version >/dev/null; do
    kill -0 "${pids[-1]}" # it ended: so does this
    sleep 0.1
  done
  contenders+=("upower -d")
fi

"$interleave" "$rounds" "${contenders[@]}"
