# For benchmarks: a real laptop's battery in the place of this machine's, and what reads it. To be
# sourced in the project's folder.

export LUMOWATT=${LUMOWATT:-$PWD/build/release/lumowatt}
supplies=/sys/class/power_supply

has() { command -v "$1" >/dev/null; }

# Builds the program and a target of the benchmarks, then begins the script again, with ARGUMENTs, in
# a namespace of its own, where the laptop's supplies are.
begin_laptop() { # TARGET ARGUMENT...
  if [[ ${LUMOWATT_BENCHMARK:-} != inside ]]; then
    script/build release lumowatt
    script/build release "$1"
    sync # pages of a file that is still to be written count as dirty
    local namespace=(unshare --mount)
    [[ $(id -u) -eq 0 ]] || namespace+=(--map-root-user)
    LUMOWATT_BENCHMARK=inside exec "${namespace[@]}" "$0" "${@:2}"
  fi
  mount -t tmpfs none "$supplies" # in memory, as the kernel's: nobody is to wait for a disk
  cp -r tests/fixtures/linux/01-thinkpad-lnv45n1-discharging/class/power_supply/. "$supplies"

  scratch=$(mktemp -d)
  pids=()
  trap finish EXIT
  # Nothing is to reach whoever runs this.
  export HOME=$scratch XDG_CONFIG_HOME=$scratch/config XDG_RUNTIME_DIR=$scratch
}

finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$scratch"
}

# Starts a bus, at $scratch/NAME. It starts no service by itself, which would cost time and outlive it.
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

# The daemon, on a system bus of its own. It finds no battery, because a mounted folder is no device
# to udev: what its clients take is less than on a laptop, if anything.
begin_upower() {
  begin_bus system
  export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$scratch/system
  /usr/libexec/upowerd >"$scratch/upowerd.log" 2>&1 &
  pids+=($!)
  until upower -d 2>/dev/null | grep daemon-version >/dev/null; do
    kill -0 "${pids[-1]}" # it ended: so does this
    sleep 0.1
  done
}
