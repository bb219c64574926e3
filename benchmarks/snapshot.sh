#!/usr/bin/env bash
# Measures the cost of a snapshot, compared with a minimal program that draws one line of text with
# the same libraries and font and writes a PNG file of the same size:
#
#   benchmarks/snapshot.sh [ROUNDS]
#
# $LUMOWATT is the path of the measured program (default: the release build).
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
