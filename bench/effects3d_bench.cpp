#include "bench/bench_support.h"

namespace {

void BM_DoorOpen(benchmark::State& state) { zvbench::run_transition(state, 59, 0, 0.4); }
// OpenGL: one path only; the first iteration makes the renderer.
void BM_Cube(benchmark::State& state) { zvbench::run_transition(state, 57, 0, 0.4, 720, 576); }
void BM_DriveOff(benchmark::State& state) { zvbench::run_transition(state, 49, 0, 0.9, 720, 576); }

BENCHMARK(BM_DoorOpen)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_Cube)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DriveOff)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace
