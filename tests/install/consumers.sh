#!/usr/bin/env bash
# Builds and runs a host of the installed library twice: through find_package
# and through pkg-config. PREFIX is where it is installed; without it, the
# system's own folders (the Debian packages).
# usage: consumers.sh WORK_DIR CXX [PREFIX]
set -euo pipefail
work=$1 cxx=$2 prefix=${3:-}
here=$(cd "$(dirname "$0")" && pwd)
cmake_args=() rpath=() pc_path=${PKG_CONFIG_PATH:-}
if [ -n "$prefix" ]; then
  cmake_args=(-DCMAKE_PREFIX_PATH="$prefix")
  pc_path=$(dirname "$(find "$prefix" -name zvtransition.pc)")
  rpath=(-Wl,-rpath,"$(PKG_CONFIG_PATH=$pc_path pkg-config --variable=libdir zvtransition)")
fi

cmake -S "$here" -B "$work/cmake" -DCMAKE_CXX_COMPILER="$cxx" "${cmake_args[@]}" >/dev/null
cmake --build "$work/cmake" >/dev/null
said=$("$work/cmake/consumer")
echo "find_package: $said"

flags=$(PKG_CONFIG_PATH=$pc_path pkg-config --cflags --libs zvtransition)
# shellcheck disable=SC2086
"$cxx" -std=c++17 "$here/consumer.cpp" -o "$work/consumer-pc" $flags \
  -Wl,--push-state,--no-as-needed -lzvCtrls -Wl,--pop-state "${rpath[@]}"
said=$("$work/consumer-pc")
echo "pkg-config: $said"
