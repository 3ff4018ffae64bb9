#include "bench/bench_support.h"

namespace {

void BM_RegionRoundOpen(benchmark::State& state) { zvbench::run_transition(state, 5, 2, 0.4); }
void BM_RegionDiamondOpen(benchmark::State& state) { zvbench::run_transition(state, 5, 6, 0.4); }
void BM_BlindVertical(benchmark::State& state) { zvbench::run_transition(state, 10, 0, 0.4); }
void BM_BlindSlanted(benchmark::State& state) { zvbench::run_transition(state, 10, 4, 0.4); }

BENCHMARK(BM_RegionRoundOpen)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RegionDiamondOpen)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_BlindVertical)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_BlindSlanted)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
