# shellcheck shell=bash disable=SC2154
#
# A MATE panel along the top of the screen, with one applet at its right end.

# Prepares the panel: prepare_mate APPLET FACTORY. APPLET is the applet's identifier, such as
# "IndicatorAppletFactory::IndicatorApplet". FACTORY is the last part of the bus name of the factory
# that creates the applet. The bus starts the factory when the panel requests it.
prepare_mate() {
  use_settings_file <<END
[org/mate/panel/general]
toplevel-id-list=['top']
object-id-list=['tray']
[org/mate/panel/toplevels/top]
size=$bar_height
orientation='top'
expand=true
[org/mate/panel/objects/tray]
object-type='applet'
applet-iid='$1'
toplevel-id='top'
position=0
panel-right-stick=true
END
  # MATE's settings daemon sets this as well. Without it, buttons with a label show no icon.
  echo gtk-button-images=1 >>"$XDG_CONFIG_HOME/gtk-3.0/settings.ini"
  cp "/usr/share/dbus-1/services/org.mate.panel.applet.$2.service" "$session/services"
}

open_mate() { # THEME
  local -A names=([light]=Adwaita [dark]=Adwaita:dark)
  GTK_THEME=${names[$1]}
  export GTK_THEME
  bus_call org.freedesktop.DBus /org/freedesktop/DBus \
    org.freedesktop.DBus.UpdateActivationEnvironment \
    "{'GTK_THEME': '$GTK_THEME', 'DISPLAY': '$DISPLAY', 'GSETTINGS_BACKEND': 'keyfile'}" >/dev/null
  launch env XDG_CURRENT_DESKTOP=MATE mate-panel --replace
  panel=$!
  await "a tray in the panel" is_on_bus org.kde.StatusNotifierWatcher
  sleep 2
}

close_mate() {
  stop "$panel"
}
