#!/usr/bin/env bash
# Calls per second of every transition of the GLSL collection at 1920x1080
# (build/bin/zv_bench), one line each, then the median and the slowest.
# Usage: bash bench/gl_collection.sh [ZV_BENCH] [extra benchmark options]
set -euo pipefail
bench=${1:-build/bin/zv_bench}
shift || true
export MESA_SHADER_CACHE_DISABLE=true
"$bench" --benchmark_filter='^BM_GlCollection/' --benchmark_format=json --benchmark_min_time=0.5 "$@" |
  python3 -c '
import json, statistics, sys
rows = [(b["items_per_second"], b["label"]) for b in json.load(sys.stdin)["benchmarks"] if "items_per_second" in b]
for rate, name in sorted(rows, reverse=True):
    print(f"{rate:8.1f} calls/s  {name}")
rates = sorted(rate for rate, _ in rows)
print(f"{len(rows)} transitions at 1920x1080: median {statistics.median(rates):.1f} calls/s, "
      f"slowest {rates[0]:.1f} calls/s ({min(rows)[1]})")
'
