#!/usr/bin/env bash
# Measures the cost of the item for the panel and the X server, and prints it as a Markdown table:
#
#   benchmarks/panel.sh [SECONDS]
#
# Starts an Xfce panel that contains only a tray, on a virtual screen. Measures the CPU time of the
# panel's processes and of the X server during SECONDS (default: 30): without the item, with the
# idle item, and while the glyph is animated. $LUMOWATT is the path of the measured program
# (default: the release build).
set -euo pipefail
cd "$(dirname "$0")/.."

# shellcheck source=script/lib/panel-session.bash
source script/lib/panel-session.bash

seconds=${1:-30}
LUMOWATT=${LUMOWATT:-$PWD/build/release/lumowatt}
script/build release lumowatt

# Prints the process ids of a process and of all its descendants.
descendants() { # PROCESS
  local child
  echo "$1"
  for child in $(pgrep -P "$1"); do descendants "$child"; done
}

# Prints the total CPU time of processes in milliseconds.
processor_time() { # PROCESS...
  local process files=()
  for process in "$@"; do files+=("/proc/$process"/task/*/schedstat); done
  awk '{ sum += $1 } END { printf "%.1f\n", sum / 1e6 }' "${files[@]}"
}

# Prints the increase of a CPU time, or 0 if the total has decreased because a thread has exited.
difference() { # BEFORE AFTER
  awk -v before="$1" -v after="$2" 'BEGIN { printf "%.0f", (after > before ? after - before : 0) }'
}

measure() { # NAME
  local processes before_panel before_screen
  sleep 10 # until everything is drawn and the panel has read the menu
  mapfile -t processes < <(descendants "$panel")
  before_panel=$(processor_time "${processes[@]}")
  before_screen=$(processor_time "$screen")
  sleep "$seconds"
  printf '| %s | %s | %s |\n' "$1" \
    "$(difference "$before_panel" "$(processor_time "${processes[@]}")")" \
    "$(difference "$before_screen" "$(processor_time "$screen")")"
}

begin_session "$LUMOWATT" tests/fixtures/linux/01-thinkpad-lnv45n1-discharging "$PWD/build/benchmarks"
# A low charge, so that the charging animation has several frames.
supply BAT0/energy_now=12040000 BAT0/capacity=24
screen=$(pgrep -P $$ -x Xvfb)
begin_panel Adwaita
printf '| in %s s | panel, ms | X server, ms |\n|---|--:|--:|\n' "$seconds"
measure "without the item"
begin_item
await "the item and its title in the panel" are_drawn 2
measure "on battery"
supply BAT0/status=Charging BAT0/power_now=28200000 AC/online=1
await "a green icon while charging" is_glyph green
measure "while charging, the glyph moving"
mkdir -p "$XDG_CONFIG_HOME/lumowatt"
echo animate=false >>"$XDG_CONFIG_HOME/lumowatt/preferences"
measure "while charging, without the animation"
