#!/usr/bin/env bash
# Runs all benchmarks and prints the results as Markdown tables:
#
#   benchmarks/all.sh
#
# Measures the program from the Debian package, which is built and unpacked first. Takes eight
# minutes. No other programs should run during that time.
set -euo pipefail
cd "$(dirname "$0")/.."

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
package=$(script/package "$scratch" 2>"$scratch/log") || { cat "$scratch/log" >&2 && exit 1; }
dpkg-deb --extract "$package" "$scratch"
export LUMOWATT=$scratch/usr/bin/lumowatt
sync # pages that are not yet written to disk would count as private dirty memory

os() { sed -n 's/^PRETTY_NAME="\(.*\)"/\1/p' /etc/os-release; }
processor() { sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -n 1; }
memory() { awk '/^MemTotal/ { printf "%.0f GiB", $2 / 1048576 }' /proc/meminfo; }

echo "$(processor), $(nproc) cores, $(memory); $(os), Linux $(uname -r);" \
  "$(c++ --version | head -n 1). Version $("$LUMOWATT" --version), installed size" \
  "$(dpkg-deb --field "$package" Installed-Size) KiB."
printf '\n## One reading\n\n'
benchmarks/dump.sh
printf '\n## A snapshot\n\n'
benchmarks/snapshot.sh
printf '\n## The item in the panel\n\n'
benchmarks/resident.sh
printf '\nThe panel that shows it:\n\n'
benchmarks/panel.sh
printf '\n## A refresh\n\n'
benchmarks/refresh.sh
