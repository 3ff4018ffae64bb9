#!/usr/bin/env bash
# Builds and runs every test twice: a normal build, then one with
# AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/deps.sh
zv_ensure_packages

# Mesa's shader cache runs a thread of its own that Mesa's exit handler stops
# while the leak checker walks the threads (which can crash the checker); the
# tests also leave no cache behind in the home folder this way.
export MESA_SHADER_CACHE_DISABLE=true

zv_build build -DCMAKE_BUILD_TYPE=Release -DZV_BUILD_TESTS=ON -DZV_BUILD_BENCH=ON
(cd build && ctest --output-on-failure -j "$(nproc)")

# The Debian packages: built, checked by lintian, installed, used, removed.
bash tests/packages/deb_test.sh

zv_build build-sanitize -DCMAKE_BUILD_TYPE=Debug -DZV_SANITIZE=ON -DZV_BUILD_TESTS=ON -DZV_BUILD_BENCH=OFF
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
(cd build-sanitize && ctest --output-on-failure -j "$(nproc)")

# Two minutes of coverage-guided fuzzing over every transition and service.
bash fuzz/run.sh smoke

# The threaded tests under ThreadSanitizer (library, zvtran and those tests only).
CC=clang CXX=clang++ ZV_TARGETS="zv_tsan_tests zvtran zvCtrls" zv_build build-tsan -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZV_TSAN=ON -DZV_BUILD_TESTS=ON -DZV_BUILD_BENCH=OFF
(cd build-tsan && ctest --output-on-failure -j "$(nproc)")

# The Windows DLLs: both cross-built, their tables checked, the 64-bit set run
# under wine and compared with the native build (skipped, saying so, when its
# packages cannot be installed).
bash tools/windows.sh
