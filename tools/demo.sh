#!/usr/bin/env bash
# Builds zvtran and shows what it does: the catalogue, then one Fade call.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/deps.sh
zv_ensure_packages

ZV_TARGETS=zvtran zv_build build -DCMAKE_BUILD_TYPE=Release
build/bin/zvtran catalogue
echo
echo "Fade, style 0 at position 0.5 of a black frame (a) into a white one (b):"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
python3 -c "import sys; sys.stdout.buffer.write(bytes([16]*64*48 + [128]*2*32*24))" >"$tmp/a.yuv"
python3 -c "import sys; sys.stdout.buffer.write(bytes([235]*64*48 + [128]*2*32*24))" >"$tmp/b.yuv"
build/bin/zvtran apply Fade --a "$tmp/a.yuv" --a-size 64x48 --b "$tmp/b.yuv" --b-size 64x48 \
  --out "$tmp/out.yuv" --out-size 64x48 --style 0 --position 0.5
python3 -c "import sys; d=open(sys.argv[1],'rb').read(); print('first luma sample:', d[0], '(three quarters of 16 plus a quarter of 235)')" "$tmp/out.yuv"
