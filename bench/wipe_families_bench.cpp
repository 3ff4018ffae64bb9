#include "bench/bench_support.h"

namespace {

void BM_ClockClockwise(benchmark::State& state) { zvbench::run_transition(state, 6, 1, 0.4); }
void BM_ClockFourTimes(benchmark::State& state) { zvbench::run_transition(state, 6, 5, 0.4); }
void BM_CenterRotate(benchmark::State& state) { zvbench::run_transition(state, 8, 2, 0.4); }
void BM_Build(benchmark::State& state) { zvbench::run_transition(state, 11, 0, 0.4); }
void BM_Spiral(benchmark::State& state) { zvbench::run_transition(state, 12, 1, 0.4); }
void BM_WipeChecker(benchmark::State& state) { zvbench::run_transition(state, 19, 0, 0.4); }
void BM_WipeBands(benchmark::State& state) { zvbench::run_transition(state, 19, 2, 0.4); }
void BM_Split(benchmark::State& state) { zvbench::run_transition(state, 20, 0, 0.4); }
void BM_CenterSplit(benchmark::State& state) { zvbench::run_transition(state, 21, 0, 0.4); }
void BM_DoubleSlide(benchmark::State& state) { zvbench::run_transition(state, 22, 0, 0.4); }
void BM_TriangleRotate(benchmark::State& state) { zvbench::run_transition(state, 23, 0, 0.4); }
void BM_TrianglePushSideways(benchmark::State& state) { zvbench::run_transition(state, 24, 0, 0.4); }
void BM_TrianglePushVertical(benchmark::State& state) { zvbench::run_transition(state, 24, 1, 0.4); }
void BM_TriangleSlide(benchmark::State& state) { zvbench::run_transition(state, 25, 0, 0.4); }
void BM_SplitBack(benchmark::State& state) { zvbench::run_transition(state, 30, 0, 0.4); }
void BM_SingleTriangleDoorSwing(benchmark::State& state) { zvbench::run_transition(state, 31, 2, 0.4); }
void BM_SingleTriangleDoorSlide(benchmark::State& state) { zvbench::run_transition(state, 31, 6, 0.4); }
void BM_MultiTriangleDoor(benchmark::State& state) { zvbench::run_transition(state, 32, 3, 0.4); }

BENCHMARK(BM_ClockClockwise)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_ClockFourTimes)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_CenterRotate)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Build)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Spiral)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_WipeChecker)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_WipeBands)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Split)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_CenterSplit)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_DoubleSlide)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_TriangleRotate)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_TrianglePushSideways)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_TrianglePushVertical)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_TriangleSlide)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_SplitBack)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_SingleTriangleDoorSwing)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_SingleTriangleDoorSlide)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_MultiTriangleDoor)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
