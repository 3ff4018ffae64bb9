#include "bench/bench_support.h"
#include "gl/level_zero.h"

namespace {

void BM_DoorOpen(benchmark::State& state) { zvbench::run_transition(state, 59, 0, 0.4); }

// OpenGL: one path only. Arguments:
// path (always 0), effect id, frame height (576: 720 x 576, 1080: 1920 x 1080).
// Real time is what a host sees; process CPU time counts llvmpipe's threads too.
void BM_OpenGl(benchmark::State& state) {
  const int id = static_cast<int>(state.range(1)), height = static_cast<int>(state.range(2));
  const int width = height == 576 ? 720 : 1920;
  // One call first, so that making the renderer (context, texture, shaders) is not timed.
  auto frame = zvbench::noise_frame(width, height, 4);
  TransitionParams params;
  std::memset(&params, 0, sizeof params);
  params.duration = 1.0;
  params.position = 0.3;
  params.enabled = 1;
  zv::transition_entry(id)(frame.get(), frame.get(), frame.get(), &params);
  zvbench::run_transition(state, id, 0, 0.3, width, height);
}

// Level 0 of the largest textures filled from a frame's planes: rows converted and scaled as the mipmap builder
// scales them, over the cores. Arguments: path (0 SIMD rows, 1 C rows), frame height (720: 1280 x 720, 1080,
// 2160: 3840 x 2160).
void BM_TextureLevelZero(benchmark::State& state) {
  const int height = static_cast<int>(state.range(1)), width = height * 16 / 9;
  auto frame = zvbench::noise_frame(width, height, 5);
  const zv::LevelZeroSize size{zv::mipmap_nearest_power(width), zv::mipmap_nearest_power(height)};
  zv::set_kernel_path(state.range(0) ? zv::KernelPath::kReference : zv::KernelPath::kFast);
  zv::LevelZeroScaler scaler;
  scaler.Prepare(width, height, size);
  std::vector<uint32_t> texels(static_cast<size_t>(size.width) * size.height);
  for (auto _ : state) {
    scaler.Fill(zv::FrameRows(*frame, width, height), texels.data());
    benchmark::DoNotOptimize(texels.data());
  }
  zv::set_kernel_path(zv::KernelPath::kFast);
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(width) * height * 3 / 2);
}

BENCHMARK(BM_DoorOpen)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_OpenGl)
    ->ArgNames({"path", "id", "height"})
    ->ArgsProduct({{0}, {57, 49, 42, 43, 45, 47, 48, 50, 51, 52, 55, 58, 60, 61, 62, 64}, {576, 1080}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(BM_TextureLevelZero)
    ->ArgNames({"reference", "height"})
    ->ArgsProduct({{0, 1}, {720, 1080, 2160}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

}  // namespace
