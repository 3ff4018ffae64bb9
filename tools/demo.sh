#!/usr/bin/env bash
# Builds zvtran and renders the gallery: every implemented transition in each
# of its styles, as looping previews and contact sheets on one web page.
# Usage: bash tools/demo.sh [DIR]   (default: ./zvtran-demo)
set -euo pipefail
out=${1:-zvtran-demo}
case "$out" in /*) ;; *) out="$PWD/$out" ;; esac
cd "$(dirname "$0")/.."
source tools/deps.sh
zv_ensure_packages

ZV_TARGETS=zvtran zv_build build -DCMAKE_BUILD_TYPE=Release
build/bin/zvtran demo -o "$out"
echo "Open it in a browser, e.g.: chromium \"$out/index.html\" (or xdg-open)."
