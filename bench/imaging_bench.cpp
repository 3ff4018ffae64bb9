// The picture services at 1920x1080: both conversions, the resize kernels and
// the keyed overlay (0 fast, 1 reference path).
#include <vector>

#include "bench/bench_support.h"
#include "imaging/image_resize.h"
#include "imaging/yuv_rgb.h"

namespace {

constexpr int kWidth = 1920, kHeight = 1080;

void BM_Rgb24ToYuv420(benchmark::State& state) {
  const BITMAPINFOHEADER header = zv::rgb24_header(kWidth, kHeight);
  std::vector<uint8_t> pixels(static_cast<size_t>(zv::dib_row_bytes(kWidth)) * kHeight, 90);
  auto frame = zvbench::noise_frame(kWidth, kHeight, 1);
  for (auto _ : state) {
    Rgb24_2_yuv420(frame->get_Y(), frame->get_U(), frame->get_V(), kWidth, kWidth / 2, kWidth / 2, &header,
                   pixels.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(pixels.size()));
}

void BM_Yuv420ToRgb24(benchmark::State& state) {
  const BITMAPINFOHEADER header = zv::rgb24_header(kWidth, kHeight);
  std::vector<uint8_t> pixels(static_cast<size_t>(zv::dib_row_bytes(kWidth)) * kHeight);
  auto frame = zvbench::noise_frame(kWidth, kHeight, 1);
  for (auto _ : state) {
    Yuv420_2_rgb24(&header, pixels.data(), frame->get_Y(), frame->get_U(), frame->get_V(), kWidth, kWidth / 2,
                   kWidth / 2);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(pixels.size()));
}

// 1280x720 up to 1920x1080 (or 1920x1080 down to 1280x720 when reducing) with
// the interpolation the first argument names.
void BM_ImageResize(benchmark::State& state) {
  const bool reduce = state.range(1) != 0;
  auto src = reduce ? zvbench::noise_frame(kWidth, kHeight, 1) : zvbench::noise_frame(1280, 720, 1);
  auto dst = reduce ? zvbench::noise_frame(1280, 720, 2) : zvbench::noise_frame(kWidth, kHeight, 2);
  for (auto _ : state) {
    benchmark::DoNotOptimize(zvImageResize(dst.get(), src.get(), static_cast<IMAGE_INTERPOLATION>(state.range(0)),
                                           IMAGE_RESIZE_STRETCH));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(dst->width) * dst->height * 3 / 2);
}

void BM_OverlapAlphaBlend(benchmark::State& state) { zvbench::run_transition(state, 17, 0, 0.4); }

BENCHMARK(BM_Rgb24ToYuv420);
BENCHMARK(BM_Yuv420ToRgb24);
BENCHMARK(BM_ImageResize)->ArgsProduct({{0, 1, 2}, {0, 1}})->ArgNames({"interpolation", "reduce"});
BENCHMARK(BM_OverlapAlphaBlend)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
