#!/usr/bin/env bash
# What the item costs the panel that shows it, as a table in Markdown:
#
#   benchmarks/panel.sh [SECONDS]
#
# An Xfce panel with nothing but a tray, on a screen in memory: the processor time of its processes in
# so many seconds (30), and of the X server's, without the item and with it, idle and while its glyph
# moves. The program is the release build's, or $LUMOWATT.
set -euo pipefail
cd "$(dirname "$0")/.."

# shellcheck source=script/lib/panel-session.bash
source script/lib/panel-session.bash

seconds=${1:-30}
LUMOWATT=${LUMOWATT:-$PWD/build/release/lumowatt}
script/build release lumowatt

# A process and all that it has started.
descendants() { # PROCESS
  local child
  echo "$1"
  for child in $(pgrep -P "$1"); do descendants "$child"; done
}

# The processor time that processes have had, in milliseconds.
processor_time() { # PROCESS...
  local process files=()
  for process in "$@"; do files+=("/proc/$process"/task/*/schedstat); done
  awk '{ sum += $1 } END { printf "%.1f\n", sum / 1e6 }' "${files[@]}"
}

# A thread that ends takes its time with it.
difference() { # BEFORE AFTER
  awk -v before="$1" -v after="$2" 'BEGIN { printf "%.0f", (after > before ? after - before : 0) }'
}

measure() { # NAME
  local processes before_panel before_screen
  sleep 10 # until all is drawn and the menu's first reading is over
  mapfile -t processes < <(descendants "$panel")
  before_panel=$(processor_time "${processes[@]}")
  before_screen=$(processor_time "$screen")
  sleep "$seconds"
  printf '| %s | %s | %s |\n' "$1" \
    "$(difference "$before_panel" "$(processor_time "${processes[@]}")")" \
    "$(difference "$before_screen" "$(processor_time "$screen")")"
}

begin_session "$LUMOWATT" tests/fixtures/linux/01-thinkpad-lnv45n1-discharging "$PWD/build/benchmarks"
# So empty that the glyph has a way to go while charging.
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
