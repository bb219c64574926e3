#!/usr/bin/env bash
# What one reading costs, beside the other programs that are installed and read the same battery:
#
#   benchmarks/dump.sh [ROUNDS]
#
# All of them run in turns over one real laptop's power-supply folder, which is mounted over this
# machine's own in a private namespace. The program is the release build's, or $LUMOWATT.
set -euo pipefail
cd "$(dirname "$0")/.."

# shellcheck source=benchmarks/laptop.bash
source benchmarks/laptop.bash

rounds=${1:-500}
interleave=$PWD/build/release/interleave
begin_laptop interleave "$rounds"

cd "$supplies"
contenders=("$LUMOWATT --dump" true "cat $(echo ./*/uevent)")
if has acpi; then contenders+=("acpi -b"); fi
if has i3status; then
  printf '%s\n' 'general { output_format = none }' 'order += "battery all"' \
    'battery all { format = "%percentage %consumption" }' >"$HOME/.i3status.conf"
  contenders+=("i3status --run-once")
fi
if has upower && has dbus-daemon; then
  begin_upower
  contenders+=("upower -d")
fi

"$interleave" "$rounds" "${contenders[@]}"
