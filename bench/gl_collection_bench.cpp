// The GLSL collection: calls per second of each transition at 1920 x 1080 on
// the OpenGL path (llvmpipe where there is no GPU). bench/gl_collection.sh
// runs them all and prints the median and the slowest.
#include "bench/bench_support.h"
#include "effects3d/zv_gl_collection.h"
#include "gl/gl_release.h"

namespace {

// Argument: the transition's index. Real time is what a host sees; process
// CPU time counts the rasteriser's threads too.
void BM_GlCollection(benchmark::State& state) {
  const int index = static_cast<int>(state.range(0));
  auto a = zvbench::noise_frame(1920, 1080, 1), b = zvbench::noise_frame(1920, 1080, 2);
  auto out = zvbench::noise_frame(1920, 1080, 3);
  // One call first, so that making the renderer and compiling the shader is not timed.
  if (zvGlTranApply(index, out.get(), a.get(), b.get(), 0.4, nullptr, 0) != kZvGlDone) {
    state.SkipWithError(zvGlTranError());
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(zvGlTranApply(index, out.get(), a.get(), b.get(), 0.4, nullptr, 0));
  state.SetLabel(zvGlTranInfo(index)->name);
  state.SetItemsProcessed(state.iterations());
  ZvFreeOpenGLObj();
}

BENCHMARK(BM_GlCollection)
    ->DenseRange(0, zvGlTranCount() - 1)
    ->ArgName("index")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

}  // namespace
