#!/usr/bin/env bash
# What one reading costs, beside other programs that read the same battery:
#
#   benchmarks/dump.sh [ROUNDS]
#
# All of them run in turns over one real laptop's power-supply folder, which is mounted over this
# machine's own in a private namespace. Needs the packages acpi, upower and dbus.
set -euo pipefail
cd "$(dirname "$0")/.."

rounds=${1:-500}
machine=$PWD/tests/fixtures/linux/01-thinkpad-lnv45n1-discharging/class/power_supply

if [[ ${LUMOWATT_BENCHMARK:-} != inside ]]; then
  missing=()
  for command in acpi upower dbus-daemon; do
    command -v "$command" >/dev/null || missing+=("$command")
  done
  if [[ ${#missing[@]} -gt 0 ]]; then
    echo "Missing: ${missing[*]}. On Debian: apt-get install acpi upower dbus" >&2
    exit 1
  fi
  script/build release lumowatt
  script/build release interleave
  namespace=(unshare --mount)
  [[ $(id -u) -eq 0 ]] || namespace+=(--map-root-user)
  LUMOWATT_BENCHMARK=inside exec "${namespace[@]}" "$0" "$rounds"
fi

mount --bind "$machine" /sys/class/power_supply

# A system bus of our own, for upower's daemon. It finds no battery, because a mounted folder is no
# device to udev; what its client takes is less than on a laptop, if anything.
scratch=$(mktemp -d)
pids=()
finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$scratch"
}
trap finish EXIT
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

uevents=$(printf ' %s' /sys/class/power_supply/*/uevent)
build/release/interleave "$rounds" "acpi -b" "build/release/lumowatt --dump" "cat$uevents" \
  "upower -d" "true"
