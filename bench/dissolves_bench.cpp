#include "bench/bench_support.h"

namespace {

void BM_AddDissolve(benchmark::State& state) { zvbench::run_transition(state, 36, 0, 0.3); }
void BM_NonAddDissolve(benchmark::State& state) { zvbench::run_transition(state, 37, 0, 0.3); }
void BM_RandomDissolve(benchmark::State& state) { zvbench::run_transition(state, 38, 0, 0.4); }
void BM_MosaicBasedWipe(benchmark::State& state) { zvbench::run_transition(state, 15, 0, 0.7); }
void BM_GradientWipeColumns(benchmark::State& state) { zvbench::run_transition(state, 39, 0, 0.5); }
void BM_GradientWipeRows(benchmark::State& state) { zvbench::run_transition(state, 39, 2, 0.5); }

BENCHMARK(BM_AddDissolve)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_NonAddDissolve)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RandomDissolve)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_MosaicBasedWipe)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_GradientWipeColumns)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_GradientWipeRows)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
