#include "bench/bench_support.h"

namespace {

void BM_LineWipeSide(benchmark::State& state) { zvbench::run_transition(state, 1, 0, 0.4); }
void BM_LineWipeCorner(benchmark::State& state) { zvbench::run_transition(state, 1, 4, 0.4); }
void BM_PushWipeSide(benchmark::State& state) { zvbench::run_transition(state, 2, 0, 0.4); }
void BM_PushWipeCorner(benchmark::State& state) { zvbench::run_transition(state, 2, 7, 0.4); }

BENCHMARK(BM_LineWipeSide)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_LineWipeCorner)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_PushWipeSide)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_PushWipeCorner)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
