#!/usr/bin/env bash
# Installs the build tree under a scratch prefix, then builds and runs a
# consumer against it twice: through find_package and through pkg-config.
# usage: install_test.sh BUILD_DIR WORK_DIR CXX
set -euo pipefail
build=$1 work=$2 cxx=$3
rm -rf "$work"
cmake --install "$build" --prefix "$work/prefix" >/dev/null
bash "$(dirname "$0")/consumers.sh" "$work" "$cxx" "$work/prefix"
