#!/usr/bin/env bash
# The Windows DLLs: cross-builds the 32-bit and the 64-bit set with mingw-w64
# (library, host modules, the comparing host program), checks the 32-bit
# modules' export and import tables, then runs the 64-bit program under wine in
# a virtual X display and compares its output with the native build's.
#
# Installs what it needs when missing; when that is impossible it says so and
# skips (exit 0). 32-bit programs cannot run here, so the 32-bit set is checked
# by its tables only.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/deps.sh

ZV_WINDOWS_PACKAGES=(
  g++-mingw-w64-i686 g++-mingw-w64-x86-64 mingw-w64-tools
  wine64 xvfb xauth
  libosmesa6  # wine draws into bitmaps through OSMesa
)
native_packages=("${ZV_PACKAGES[@]}")
ZV_PACKAGES=("${ZV_WINDOWS_PACKAGES[@]}")
if ! zv_ensure_packages; then
  echo "windows: SKIPPED, could not install ${ZV_WINDOWS_PACKAGES[*]}" >&2
  exit 0
fi
ZV_PACKAGES=("${native_packages[@]}")
zv_ensure_packages

WINE64=$(command -v wine64 || echo /usr/lib/wine/wine64)
LAUNCHER=()
if command -v ccache >/dev/null; then
  LAUNCHER=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
TARGETS=(--target ZvTransition zorvan zvSuppt zvCtrls zv_host_compare)

cross_build() {
  local dir=$1 toolchain=$2
  cmake -S . -B "$dir" -G Ninja -DCMAKE_TOOLCHAIN_FILE="cmake/$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DZV_BUILD_TESTS=OFF -DZV_BUILD_BENCH=OFF --no-warn-unused-cli "${LAUNCHER[@]}" >/dev/null
  cmake --build "$dir" -j "$(nproc)" "${TARGETS[@]}"
}

echo "== windows: 32-bit build"
cross_build build-win32 mingw-i686.cmake
echo "== windows: 32-bit export and import tables"
python3 tests/windows/check_modules.py i686-w64-mingw32-objdump build-win32/bin

echo "== windows: 64-bit build"
cross_build build-win64 mingw-x86_64.cmake

echo "== windows: native reference"
if [ ! -f build/CMakeCache.txt ]; then
  cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release "${LAUNCHER[@]}" >/dev/null
fi
cmake --build build -j "$(nproc)" --target zv_host_compare
# Mesa's llvmpipe garbles 24-bit colour buffers under OSMesa, through which
# wine draws into bitmaps; both runs use its softpipe rasteriser, so the
# OpenGL frames of the two builds come from the same rasteriser.
export GALLIUM_DRIVER=softpipe
out=build-win64/compare
rm -rf "$out" && mkdir -p "$out"
build/bin/zv_host_compare "$out/native.txt"

echo "== windows: 64-bit run under wine"
export WINEPREFIX="$PWD/build-win64/wine-prefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# The program finds the DLLs beside it and writes into the current folder.
(cd build-win64/bin && xvfb-run -a "$WINE64" zv_host_compare.exe windows.txt)
mv build-win64/bin/windows.txt "$out/windows.txt"
if command -v wineserver >/dev/null; then wineserver -k || true; fi

python3 tests/windows/compare_outputs.py "$out/native.txt" "$out/windows.txt"
