// The yardstick for the cross-fades: two 1920x1080 4:2:0 frames blended with
// fixed weights in the plainest loop, which the compiler vectorises for this
// very CPU (this file alone is built with -O3 -march=native). Fade's
// crossfade and Blend are measured beside it on the same frames, hot (one set
// of frames, in cache) and cold (a pool of frame sets larger than twice the
// last-level cache, a different set each iteration). Weight 40 is what both
// transitions use at position 0.4.
#include "bench/bench_support.h"

namespace {

void blend_plain(uint8_t* out, const uint8_t* a, const uint8_t* b, size_t n) {
  for (size_t i = 0; i < n; ++i) out[i] = static_cast<uint8_t>((a[i] * (256 - 40) + b[i] * 40) >> 8);
}

void blend_frames_plain(Image* out, const Image* a, const Image* b) {
  for (int p = 0; p < 3; ++p) {
    uint8_t* planes_out[3] = {out->get_Y(), out->get_U(), out->get_V()};
    const uint8_t* planes_a[3] = {a->get_Y(), a->get_U(), a->get_V()};
    const uint8_t* planes_b[3] = {b->get_Y(), b->get_U(), b->get_V()};
    blend_plain(planes_out[p], planes_a[p], planes_b[p], out->plane_size(p));
  }
}

// range(0): 0 hot, 1 cold.
void BM_BaselineBlend(benchmark::State& state) {
  zvbench::run_on_frame_sets(state, state.range(0) != 0,
                             [](Image* out, Image* a, Image* b) { blend_frames_plain(out, a, b); });
}

void BM_FadeCrossfadeFrames(benchmark::State& state) {
  zvbench::run_on_frame_sets(state, state.range(0) != 0, zvbench::transition_call(14, 0, 0.4));
}

void BM_BlendFrames(benchmark::State& state) {
  zvbench::run_on_frame_sets(state, state.range(0) != 0, zvbench::transition_call(66, 0, 0.4));
}

BENCHMARK(BM_BaselineBlend)->Arg(0)->Arg(1)->ArgName("cold")->UseRealTime();
BENCHMARK(BM_FadeCrossfadeFrames)->Arg(0)->Arg(1)->ArgName("cold")->UseRealTime();
BENCHMARK(BM_BlendFrames)->Arg(0)->Arg(1)->ArgName("cold")->UseRealTime();

}  // namespace
