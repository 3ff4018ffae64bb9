#!/usr/bin/env bash
# Installs the build tree under a scratch prefix, then builds and runs a
# consumer against it twice: through find_package and through pkg-config.
# usage: install_test.sh BUILD_DIR WORK_DIR CXX
set -euo pipefail
build=$1 work=$2 cxx=$3
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null

cmake -S "$here" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx" >/dev/null
cmake --build "$work/cmake" >/dev/null
said=$("$work/cmake/consumer")
echo "find_package: $said"

pc_dir=$(dirname "$(find "$prefix" -name zvtransition.pc)")
flags=$(PKG_CONFIG_PATH=$pc_dir pkg-config --cflags --libs zvtransition)
libdir=$(PKG_CONFIG_PATH=$pc_dir pkg-config --variable=libdir zvtransition)
# shellcheck disable=SC2086
"$cxx" -std=c++17 "$here/consumer.cpp" -o "$work/consumer-pc" $flags \
  -Wl,--push-state,--no-as-needed -lzvCtrls -Wl,--pop-state -Wl,-rpath,"$libdir"
said=$("$work/consumer-pc")
echo "pkg-config: $said"
