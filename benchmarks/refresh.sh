#!/usr/bin/env bash
# Measures a refresh and the opening of the menu inside the program, and how their times grow:
#
#   benchmarks/refresh.sh
#
# Needs the package libbenchmark-dev.
set -euo pipefail
cd "$(dirname "$0")/.."

if ! script/build release refresh; then
  echo "Missing: Google Benchmark. On Debian: apt-get install libbenchmark-dev" >&2
  exit 1
fi
echo "| operation | supplies or samples | ratio | µs |"
echo "|---|--:|--:|--:|"
build/release/refresh --benchmark_format=csv 2>/dev/null | tr -d '"' | awk -F, '
  !/^name/ && split($1, name, "/") && $4 > 0 && name[1] !~ /_(BigO|RMS)$/ {
    if (!(name[1] in first)) first[name[1]] = $4
    printf "| %s | %s | %.2f | %.1f |\n", name[1], name[2], $4 / first[name[1]], $4 / 1000
  }'
