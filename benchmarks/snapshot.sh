#!/usr/bin/env bash
# What a snapshot costs, beside a bare program that draws one line of text with the same libraries
# and font and writes a PNG of the same size:
#
#   benchmarks/snapshot.sh [ROUNDS]
#
# The program is the release build's, or $LUMOWATT.
set -euo pipefail
cd "$(dirname "$0")/.."

rounds=${1:-200}
script/build release lumowatt
script/build release bare_picture
script/build release interleave

bin=$PWD/build/release
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
"$bin/interleave" "$rounds" "${LUMOWATT:-$bin/lumowatt} --snapshot item.png --sample draining" \
  "$bin/bare_picture bare.png"
