#!/usr/bin/env bash
# Builds the fuzz targets (clang) into build-fuzz/ and runs them.
#   fuzz/run.sh smoke        every seed, then about two minutes of new inputs
#   fuzz/run.sh long [RUNS]  RUNS executions of zv_fuzz (default 10^7) on every
#                            core, growing the corpus in fuzz/work/corpus
# Exits non-zero on any finding; the input that found it is named in the output.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/deps.sh
mode=${1:-smoke}

CC=clang CXX=clang++ ZV_TARGETS="zv_fuzz zv_fuzz_gl" zv_build build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZV_FUZZ=ON -DZV_BUILD_TESTS=OFF -DZV_BUILD_BENCH=OFF
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

# One target: the repository's seeds first (read only), new inputs into a
# scratch corpus, findings into fuzz/work/.
run() {
  local target=$1 seeds=$2 scratch=$3
  shift 3
  mkdir -p "$scratch" fuzz/work
  "build-fuzz/bin/$target" -artifact_prefix=fuzz/work/ -print_final_stats=1 "$@" "$scratch" "$seeds"
}

case "$mode" in
  smoke)
    scratch=$(mktemp -d /tmp/zv-fuzz-XXXXXX)
    trap 'rm -rf "$scratch"' EXIT
    # The progress lines are left out; a finding's report is shown whole.
    run zv_fuzz fuzz/corpus "$scratch/sw" -max_total_time=90 -timeout=20 2>&1 | grep -v "^#\|^INFO\|^\""
    run zv_fuzz_gl fuzz/corpus_gl "$scratch/gl" -max_total_time=30 -timeout=60 2>&1 | grep -v "^#\|^INFO\|^\""
    ;;
  long)
    runs=${2:-10000000}
    jobs=$(nproc)
    mkdir -p fuzz/work
    # -fork runs `jobs` workers and restarts them; -runs counts over all of them.
    run zv_fuzz fuzz/corpus fuzz/work/corpus -fork="$jobs" -runs="$runs" -timeout=20 \
      -ignore_crashes=0 2>&1 | tee fuzz/work/long.log | grep -v "^#"
    ;;
  *)
    echo "usage: fuzz/run.sh smoke|long [RUNS]" >&2
    exit 2
    ;;
esac
