# shellcheck shell=bash
#
# Functions for scripts that show the item in a real panel, on any machine. They mock a laptop by
# files, and start a session bus, a virtual screen and an Xfce panel that contains only a tray. All
# are private to the script that sources this file. They end when the script exits or is killed.

# Starts everything except the panel and the item: begin_session PROGRAM MACHINE PICTURES [SCALE].
# MACHINE is a folder like those in tests/fixtures/linux. PICTURES is the folder for pictures.
begin_session() {
  begin_bare_session "$@"
  begin_xfce_settings
}

# Starts a session for any panel, without the settings of the Xfce panel. Has the parameters of
# begin_session. The screen has the size $screen_size if that is set.
begin_bare_session() {
  local program=$1 machine=$2 sanitizer
  pictures=$3
  scale=${4:-1}
  session=$(mktemp -d)
  trap end_session EXIT
  mkdir -p "$session/laptop" "$session/services" "$pictures"
  cp -r "$machine" "$session/laptop/sys"
  sanitizer=$(ldd "$program" | awk '$1 ~ /^libasan/ { print $1 }') # must be preloaded first
  lumowatt=(env UMOCKDEV_DIR="$session/laptop"
    LD_PRELOAD="$sanitizer libumockdev-preload.so.0" "$program")

  write_settings
  export HOME=$session XDG_CONFIG_HOME=$session/config XDG_DATA_HOME=$session/data
  export XDG_CACHE_HOME=$session/cache XDG_RUNTIME_DIR=$session/run
  export LC_ALL=C.UTF-8 GDK_BACKEND=x11 GDK_SCALE=$scale NO_AT_BRIDGE=1
  unset DISPLAY GDK_DPI_SCALE GTK_MODULES SESSION_MANAGER WAYLAND_DISPLAY
  mkdir -m 700 "$XDG_RUNTIME_DIR"

  launch dbus-daemon --config-file="$session/bus.conf" --nofork --nopidfile --print-address=3 \
    3>"$session/address"
  screen_size=${screen_size:-$((760 * scale))x$((560 * scale))}
  launch Xvfb -displayfd 3 -screen 0 "${screen_size}x24" -noreset 3>"$session/display"
  await "a session bus and a screen" test -s "$session/address" -a -s "$session/display"
  DBUS_SESSION_BUS_ADDRESS=$(<"$session/address")
  DISPLAY=:$(<"$session/display")
  export DBUS_SESSION_BUS_ADDRESS DISPLAY
}

begin_xfce_settings() {
  write_xfce_settings
  launch "$(sed -n 's/^Exec=//p' /usr/share/dbus-1/services/org.xfce.Xfconf.service)"
  await "the panel's settings" is_on_bus org.xfce.Xfconf
}

# Writes the settings of the bus and of GTK. The bus activates only services in the session's own
# folder "services", so that no other process is started that could outlive the session.
write_settings() {
  local gtk=$session/config/gtk-3.0
  mkdir -p "$gtk"
  cat >"$session/bus.conf" <<END
<busconfig>
  <type>session</type>
  <listen>unix:path=$session/bus</listen>
  <servicedir>$session/services</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
END
  cat >"$gtk/settings.ini" <<'END'
[Settings]
gtk-font-name=Inter 10
gtk-xft-antialias=1
gtk-xft-hinting=1
gtk-xft-hintstyle=hintslight
gtk-xft-rgba=none
END
}

# Items that the tray knows, as on an ordinary desktop. When the tray sees a new item, it writes the
# list of known items again. The panel is along the top of the screen and contains an expanding gap
# and the tray.
other_items=("(null)" nm-applet blueman)

write_xfce_settings() {
  local xfconf=$session/config/xfce4/xfconf/xfce-perchannel-xml
  mkdir -p "$xfconf"
  cat >"$xfconf/xfce4-panel.xml" <<END
<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
      <property name="known-items" type="array">
$(printf '        <value type="string" value="%s"/>\n' "${other_items[@]}")
      </property>
    </property>
  </property>
</channel>
END
}

# Resets the list of known items, so that the item is new to the next panel.
reset_known_items() {
  local list=(-c xfce4-panel -p /plugins/plugin-2/known-items) other values=()
  for other in "${other_items[@]}"; do values+=(-t string -s "$other"); done
  xfconf-query "${list[@]}" -r
  xfconf-query "${list[@]}" -n -a "${values[@]}"
}

# Starts the panel: begin_panel THEME. THEME is Adwaita or Adwaita:dark.
begin_panel() {
  launch env GTK_THEME="$1" xfce4-panel --disable-wm-check
  panel=$!
  await "a tray in the panel" is_on_bus org.kde.StatusNotifierWatcher
}

end_panel() {
  stop "$panel"
  await "no tray without the panel" is_not_on_bus org.kde.StatusNotifierWatcher
}

begin_item() {
  launch "${lumowatt[@]}"
  item=$!
}

has_item_ended() { ! is_running "$item"; }

# Changes attributes of the laptop's power supplies: supply ATTRIBUTE=VALUE... Each ATTRIBUTE starts
# with the name of its supply, as in AC/online=1.
supply() {
  local attribute
  for attribute in "$@"; do
    echo "${attribute#*=}" >"$session/laptop/sys/class/power_supply/${attribute%%=*}"
  done
}

# Processes

# Starts a process and stores its ID in $!. If the script is killed, the kernel terminates the
# process.
launch() {
  setpriv --pdeathsig TERM "$@" >>"$session/log" 2>&1 &
}

is_running() { jobs -pr | grep -qx "$1"; }

# Terminates a process. Kills the process if it does not exit in time.
stop() {
  local deadline=$((SECONDS + 10))
  kill "$1" 2>/dev/null || return 0
  while is_running "$1"; do
    ((SECONDS < deadline)) || kill -KILL "$1"
    sleep 0.05
  done
}

end_session() {
  local process
  for process in $(jobs -pr); do stop "$process"; done
  rm -rf "$session"
}

# Waits until a command succeeds: await EXPECTATION COMMAND [ARGUMENTS].
await() {
  local expectation=$1 deadline=$((SECONDS + 45))
  shift
  until "$@"; do
    ((SECONDS < deadline)) || fail "expected $expectation"
    sleep 0.1
  done
}

# Prints an error message and the output of the processes, takes a picture of the screen and exits.
fail() {
  echo "${0##*/}: $*" >&2
  sed 's/^/  | /' "$session/log" >&2
  [[ -z ${DISPLAY:-} ]] || take_picture failure
  exit 1
}

# The bus

bus_call() { # NAME OBJECT METHOD [ARGUMENTS]
  gdbus call --session --dest "$1" --object-path "$2" --method "${@:3}" 2>/dev/null
}

is_on_bus() {
  [[ $(bus_call org.freedesktop.DBus / org.freedesktop.DBus.NameHasOwner "$1") == "(true,)" ]]
}

is_not_on_bus() { ! is_on_bus "$1"; }

# Returns whether the panel has the given number of items.
are_registered() { # COUNT
  local watcher=org.kde.StatusNotifierWatcher
  [[ $(bus_call $watcher /StatusNotifierWatcher org.freedesktop.DBus.Properties.Get $watcher \
    RegisteredStatusNotifierItems | grep -o "/StatusNotifierItem'" | wc -l) -eq $1 ]]
}

# The item's menu

menu_call() { bus_call com.fernhollow.Lumowatt /MenuBar "com.canonical.dbusmenu.$1" "${@:2}"; } # METHOD

has_row() { menu_call GetLayout 0 1 "['label']" | grep -q "$1"; } # TEXT

# The screen

take_picture() { import -silent -window root "$pictures/$1.png"; } # NAME

# Converts a picture of the panel without its border with ImageMagick: panel_picture ARGUMENTS.
panel_picture() {
  local window
  window=$(xdotool search --onlyvisible --maxdepth 1 --class '^xfce4-panel$' 2>/dev/null)
  convert "x:$window" -shave 2x2 +repage "$@" 2>/dev/null
}

# Prints the first column and the width of each icon in the panel, from left to right. The pointer
# must not be on the panel. Icons are recognized by their distance, which is larger than the gaps
# inside an icon.
icons() {
  panel_picture -colorspace Gray -scale 'x1!' -depth 8 gray:- | od -An -v -tu1 -w1 |
    awk -v room=$((5 * scale)) '
      NR == 1 { background = $1 }
      ($1 - background) ^ 2 <= 1 { next }
      start && NR - end > room { print start - 1, end - start + 1; start = 0 }
      !start { start = NR }
      { end = NR }
      END { if (start) print start - 1, end - start + 1 }'
}

are_drawn() { [[ $(icons | wc -l) -eq $1 ]]; } # COUNT

# Finds the glyph and sets $glyph_start and $glyph_width. The glyph is the last icon, because the
# panel inserts new icons on the left.
read_glyph() {
  local glyph
  glyph=$(icons | tail -1)
  [[ -n $glyph ]] && read -r glyph_start glyph_width <<<"$glyph"
}

# Returns whether the glyph has the given color: red, gray or green.
is_glyph() {
  local -A more_green=([red]=-1 [gray]=0 [green]=1)
  read_glyph &&
    [[ $(panel_picture -crop "${glyph_width}x+${glyph_start}+0" +repage -fuzz 10% -trim \
      -format '%[fx:(mean.g-mean.r>0.05)-(mean.r-mean.g>0.05)]' info:) == "${more_green[$1]}" ]]
}

# Prints the maximum and the minimum lightness of the tile next to the glyph, in percent.
tile_lightness() {
  local start width
  read -r start width < <(icons | tail -2 | head -1)
  panel_picture -crop "${width}x+${start}+0" +repage -colorspace Gray \
    -format '%[fx:round(100*maxima)] %[fx:round(100*minima)]\n' info:
}

point_at_glyph() {
  read_glyph || return
  xdotool mousemove $((glyph_start + glyph_width / 2)) $((15 * scale))
}

point_at_nothing() { xdotool mousemove 10 "${screen_size#*x}"; }

# Prints the open windows of the item that have the given type, MENU or TOOLTIP.
popups() {
  local window
  for window in $(xdotool search --onlyvisible --maxdepth 1 --class '^wrapper-2.0$' 2>/dev/null); do
    if xprop -id "$window" _NET_WM_WINDOW_TYPE 2>/dev/null | grep -q "$1"; then echo "$window"; fi
  done
}

# Returns whether the given number of windows of a type is open: are_open COUNT TYPE.
are_open() { [[ $(popups "$2" | wc -l) -eq $1 ]]; }

show_tool_tip() {
  point_at_glyph
  await "a tool tip" are_open 1 TOOLTIP
}

# Opens the menu of the item and stores its window in $menu.
open_menu() {
  point_at_glyph
  xdotool click 1
  await "the menu" are_open 1 MENU
  menu=$(popups MENU)
  rows=0
  await "rows of text in the menu" is_menu_still
}

close_menus() {
  point_at_nothing
  await "no menu" escape_menus
}

escape_menus() {
  xdotool key Escape
  are_open 0 MENU
}

# Returns whether the menu contains rows of text, as many as in the previous call.
is_menu_still() {
  local before=$rows
  rows=$(menu_rows | wc -l)
  ((rows > 0 && rows == before))
}

# Prints the vertical center of each row of text in the menu, from top to bottom. Separators are
# thinner than text and ignored.
menu_rows() {
  convert "x:$menu" -shave 2x2 -colorspace Gray -scale '1x!' -depth 16 gray:- |
    od -An -v -tu2 -w2 | awk '
      NR == 1 { background = $1 }
      $1 != background { ++height; next }
      height > 4 { print NR + 1 - int(height / 2) }
      { height = 0 }'
}

# Moves the pointer to a row of the menu: point_at_row NUMBER, counted from below.
point_at_row() {
  local rows
  mapfile -t rows < <(menu_rows)
  ((${#rows[@]} >= $1)) || fail "expected $1 rows in the menu"
  row=${rows[-$1]}
  xdotool mousemove --window "$menu" 40 "$row"
  await "the row to light up under the pointer" is_row_lit
}

is_row_lit() {
  [[ $(convert "x:$menu" -format "%[fx:p{4,$row} != p{4,4}]" info:) == 1 ]]
}

# Clicks on a row of the menu: choose_row NUMBER, counted from below.
choose_row() {
  point_at_row "$1"
  xdotool click 1
  await "the menu to close" are_open 0 MENU
  point_at_nothing
}
