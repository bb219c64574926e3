# shellcheck shell=bash disable=SC2154
#
# sway in a window that fills the virtual screen, for panels on Wayland.

# Starts sway with a background and further configuration: begin_sway CONFIGURATION.
begin_sway() {
  cat >"$session/sway.conf" <<END
output * bg #505860 solid_color
output X11-1 resolution $screen_size
xwayland disable
$1
END
  rm -f "$XDG_RUNTIME_DIR"/{sway-ipc.*,wayland-*}
  launch env WLR_BACKENDS=x11 WLR_RENDERER=pixman GDK_BACKEND=wayland \
    XDG_CURRENT_DESKTOP=sway sway -c "$session/sway.conf"
  sway=$!
  await "sway" compgen -G "$XDG_RUNTIME_DIR/wayland-*" >/dev/null
  await "its background" is_background_there
}

end_sway() { stop "$sway"; }

is_background_there() { [[ $(convert x:root -crop 1x1+600+500 -format '%[fx:mean>0.2]' info:) == 1 ]]; }

wayland_display() { basename "$(compgen -G "$XDG_RUNTIME_DIR/wayland-?")"; }
