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

begin_bus() { # NAME; it is then at $scratch/NAME
  dbus-daemon --session --nofork --address="unix:path=$scratch/$1" 2>"$scratch/$1.log" &
  pids+=($!)
  until [[ -S $scratch/$1 ]]; do sleep 0.1; done
}

# The supplies as umockdev describes devices.
describe_supplies() {
  local folder attribute
  for folder in "$supplies"/*/; do
    folder=${folder%/}
    printf 'P: /devices/%s\nE: SUBSYSTEM=power_supply\n' "${folder##*/}"
    sed -n 's/^POWER_SUPPLY_/E: &/p' "$folder/uevent"
    for attribute in "$folder"/*; do
      if [[ -f $attribute && ${attribute##*/} != uevent ]]; then
        printf 'A: %s=%s\n' "${attribute##*/}" "$(<"$attribute")"
      fi
    done
    echo
  done
}

# Starts UPower's daemon on a system bus of its own, through a command that it is given to.
begin_upower() { # [COMMAND...]
  begin_bus system
  export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$scratch/system
  "$@" /usr/libexec/upowerd >"$scratch/upowerd.log" 2>&1 &
  pids+=($!)
  await_upower daemon-version
}

# Waits until the daemon says something. Ends where the daemon ends.
await_upower() { # TEXT
  until upower -d 2>/dev/null | grep "$1" >/dev/null; do
    kill -0 "${pids[-1]}"
    sleep 0.1
  done
}

# The same with the laptop's battery. A mounted folder is no device to udev, so that the daemon has a
# copy from umockdev.
begin_upower_with_battery() {
  describe_supplies >"$scratch/supplies.umockdev"
  begin_upower umockdev-run --device "$scratch/supplies.umockdev" --
  await_upower native-path.*BAT0
}
