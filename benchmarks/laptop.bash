# Functions for benchmarks that replace this machine's battery with a copy of a real laptop's
# battery, and that start the services needed to read it. Source this file in the project's root
# folder.

export LUMOWATT=${LUMOWATT:-$PWD/build/release/lumowatt}
supplies=/sys/class/power_supply

has() { command -v "$1" >/dev/null; }

# Builds the program and the benchmark target TARGET. Then restarts the calling script, with the
# ARGUMENTs, in a private mount namespace that contains the laptop's power supplies.
begin_laptop() { # TARGET ARGUMENT...
  if [[ ${LUMOWATT_BENCHMARK:-} != inside ]]; then
    script/build release lumowatt
    script/build release "$1"
    sync # pages that are not yet written to disk would count as private dirty memory
    local namespace=(unshare --mount)
    [[ $(id -u) -eq 0 ]] || namespace+=(--map-root-user)
    LUMOWATT_BENCHMARK=inside exec "${namespace[@]}" "$0" "${@:2}"
  fi
  mount -t tmpfs none "$supplies" # in memory like sysfs, so that reads do not wait for a disk
  cp -r tests/fixtures/linux/01-thinkpad-lnv45n1-discharging/class/power_supply/. "$supplies"

  scratch=$(mktemp -d)
  pids=()
  trap finish EXIT
  # Isolates the programs from the files of the user who runs the benchmark.
  export HOME=$scratch XDG_CONFIG_HOME=$scratch/config XDG_RUNTIME_DIR=$scratch
}

finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$scratch"
}

# Starts a D-Bus daemon that listens on $scratch/NAME. It activates no services, because they would
# use CPU time and outlive the daemon.
begin_bus() { # NAME
  cat >"$scratch/$1.conf" <<END
<busconfig>
  <listen>unix:path=$scratch/$1</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
END
  dbus-daemon --config-file="$scratch/$1.conf" --nofork 2>"$scratch/$1.log" &
  pids+=($!)
  until [[ -S $scratch/$1 ]]; do sleep 0.1; done
}

# Starts UPower's daemon on a private system bus. The daemon finds no battery, because udev does not
# recognize the mounted folder as a device. Therefore its clients may use fewer resources than on a
# laptop, but not more.
begin_upower() {
  begin_bus system
  export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$scratch/system
  /usr/libexec/upowerd >"$scratch/upowerd.log" 2>&1 &
  pids+=($!)
  until upower -d 2>/dev/null | grep daemon-version >/dev/null; do
    kill -0 "${pids[-1]}" # exits the script if the daemon has exited
    sleep 0.1
  done
}
