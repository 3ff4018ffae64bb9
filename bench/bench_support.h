// Frames and blocks for the benchmarks: 1920x1080 4:2:0 unless told.
#pragma once

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <random>

#include "frame/kernel_path.h"
#include "frame/registration.h"
#include "frame/transition_op.h"
#include "host/image.h"

namespace zvbench {

inline std::unique_ptr<Image> noise_frame(int width, int height, unsigned seed) {
  auto image = std::make_unique<Image>(width, height);
  std::mt19937 gen(seed);
  for (uint8_t* plane : {image->get_Y(), image->get_U(), image->get_V()}) {
    size_t n = plane == image->get_Y() ? image->plane_size(0) : image->plane_size(1);
    for (size_t i = 0; i < n; ++i) plane[i] = static_cast<uint8_t>(gen());
  }
  return image;
}

// Runs transition `id` with `style` at `position` once per iteration, on the
// path the benchmark's second argument names (0 fast, 1 reference).
inline void run_transition(benchmark::State& state, int id, int style, double position, int width = 1920,
                           int height = 1080) {
  auto a = noise_frame(width, height, 1), b = noise_frame(width, height, 2), out = noise_frame(width, height, 3);
  TransitionParams params;
  std::memset(&params, 0, sizeof params);
  params.style = style;
  params.duration = 1.0;
  params.position = position;
  params.enabled = 1;
  zv::set_kernel_path(state.range(0) ? zv::KernelPath::kReference : zv::KernelPath::kFast);
  for (auto _ : state) {
    TransitionParams block = params;
    benchmark::DoNotOptimize(zv::transition_entry(id)(out.get(), a.get(), b.get(), &block));
  }
  zv::set_kernel_path(zv::KernelPath::kFast);
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(width) * height * 3 / 2);
}

}  // namespace zvbench
