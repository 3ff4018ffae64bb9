#include "bench/bench_support.h"

namespace {

void BM_FadeCrossfade(benchmark::State& state) { zvbench::run_transition(state, 14, 0, 0.4); }
void BM_FadeSweep(benchmark::State& state) { zvbench::run_transition(state, 14, 4, 0.3); }

BENCHMARK(BM_FadeCrossfade)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_FadeSweep)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
