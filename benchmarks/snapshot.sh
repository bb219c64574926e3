#!/usr/bin/env bash
# What a snapshot costs, beside a bare program that draws one line of text with the same libraries
# and font and writes a PNG of the same size:
#
#   benchmarks/snapshot.sh [ROUNDS]
set -euo pipefail
cd "$(dirname "$0")/.."

rounds=${1:-200}
script/build release lumowatt
script/build release bare_picture
script/build release interleave

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
build/release/interleave "$rounds" "build/release/bare_picture $scratch/bare.png" \
  "build/release/lumowatt --snapshot $scratch/snapshot.png --sample draining"
