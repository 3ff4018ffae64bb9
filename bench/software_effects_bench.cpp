// The image-space effects and the software 3D effects at 1920x1080, each at a
// progress where most of its geometry is at work; 3D Door (effects3d_bench)
// is the yardstick.
#include "bench/bench_support.h"

namespace {

void BM_Obscure(benchmark::State& state) { zvbench::run_transition(state, 29, 0, 0.25); }
void BM_Swap(benchmark::State& state) { zvbench::run_transition(state, 33, 0, 0.3); }
void BM_Swing(benchmark::State& state) { zvbench::run_transition(state, 35, 0, 0.4); }
void BM_Gauze(benchmark::State& state) { zvbench::run_transition(state, 54, 2, 0.4); }
void BM_EdgeFeather(benchmark::State& state) { zvbench::run_transition(state, 56, 1, 0.4); }
void BM_Wind(benchmark::State& state) { zvbench::run_transition(state, 63, 0, 0.4); }
void BM_Lens(benchmark::State& state) { zvbench::run_transition(state, 65, 0, 0.6); }
void BM_Roll(benchmark::State& state) { zvbench::run_transition(state, 18, 2, 0.4); }
void BM_RollVertical(benchmark::State& state) { zvbench::run_transition(state, 18, 6, 0.4); }
void BM_PageTurn(benchmark::State& state) { zvbench::run_transition(state, 26, 1, 0.3); }
void BM_CenterPeel(benchmark::State& state) { zvbench::run_transition(state, 27, 0, 0.4); }
void BM_PeelBack(benchmark::State& state) { zvbench::run_transition(state, 28, 0, 0.4); }
void BM_Curtain(benchmark::State& state) { zvbench::run_transition(state, 34, 0, 0.4); }

BENCHMARK(BM_Obscure)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Swap)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Swing)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Gauze)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_EdgeFeather)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Wind)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Lens)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Roll)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RollVertical)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_PageTurn)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_CenterPeel)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_PeelBack)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Curtain)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
