#include "bench/bench_support.h"

namespace {

void BM_Blend(benchmark::State& state) { zvbench::run_transition(state, 66, 0, 0.4); }
// The default inset: 40 x 40 on the 128 x 96 grid.
void BM_PictureInPicture(benchmark::State& state) { zvbench::run_transition(state, 16, 0, 0.5); }
void BM_ZoomRectangle(benchmark::State& state) { zvbench::run_transition(state, 13, 4, 0.6); }

BENCHMARK(BM_Blend)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_PictureInPicture)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_ZoomRectangle)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
