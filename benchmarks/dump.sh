#!/usr/bin/env bash
# Measures the cost of one reading, compared with other installed programs that read the battery:
#
#   benchmarks/dump.sh [ROUNDS]
#
# The programs run alternately and read a copy of a real laptop's power-supply folder, mounted over
# this machine's power-supply folder in a private mount namespace. $LUMOWATT is the path of the
# measured program (default: the release build).
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
