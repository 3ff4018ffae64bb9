// Frames and blocks for the benchmarks: 1920x1080 4:2:0 unless told.
#pragma once

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <vector>

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

// An enabled block: `style` at `position` of a transition lasting 1.
inline TransitionParams enabled_block(int style, double position) {
  TransitionParams params;
  std::memset(&params, 0, sizeof params);
  params.style = style;
  params.duration = 1.0;
  params.position = position;
  params.enabled = 1;
  return params;
}

// Runs transition `id` with `style` at `position` once per iteration, on the
// path the benchmark's second argument names (0 fast, 1 reference).
inline void run_transition(benchmark::State& state, int id, int style, double position, int width = 1920,
                           int height = 1080) {
  auto a = noise_frame(width, height, 1), b = noise_frame(width, height, 2), out = noise_frame(width, height, 3);
  const TransitionParams params = enabled_block(style, position);
  zv::set_kernel_path(state.range(0) ? zv::KernelPath::kReference : zv::KernelPath::kFast);
  for (auto _ : state) {
    TransitionParams block = params;
    benchmark::DoNotOptimize(zv::transition_entry(id)(out.get(), a.get(), b.get(), &block));
  }
  zv::set_kernel_path(zv::KernelPath::kFast);
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(width) * height * 3 / 2);
}

// One call of transition `id` on given frames, on the fast path.
inline std::function<void(Image*, Image*, Image*)> transition_call(int id, int style, double position) {
  return [=](Image* out, Image* a, Image* b) {
    TransitionParams params = enabled_block(style, position);
    benchmark::DoNotOptimize(zv::transition_entry(id)(out, a, b, &params));
  };
}

// Runs call(out, a, b) on 1920x1080 frames once per iteration: hot, one set
// of frames; cold, a different set each iteration from a pool more than twice
// the size of the last-level cache (at most 3 GiB), so every call reads and
// writes memory.
inline void run_on_frame_sets(benchmark::State& state, bool cold,
                              const std::function<void(Image*, Image*, Image*)>& call) {
  constexpr int kWidth = 1920, kHeight = 1080;
  constexpr size_t kSetBytes = size_t{3} * kWidth * kHeight * 3 / 2;
  size_t sets = 1;
  if (cold) {
    const long llc = sysconf(_SC_LEVEL3_CACHE_SIZE);
    const size_t want = 2 * static_cast<size_t>(llc > 0 ? llc : 64 << 20) / kSetBytes + 2;
    sets = std::min<size_t>(want, (size_t{3} << 30) / kSetBytes);
  }
  static std::vector<std::unique_ptr<Image>> pool;
  while (pool.size() < 3 * sets) pool.push_back(noise_frame(kWidth, kHeight, static_cast<unsigned>(pool.size())));
  size_t next = 0;
  for (auto _ : state) {
    call(pool[3 * next].get(), pool[3 * next + 1].get(), pool[3 * next + 2].get());
    next = next + 1 == sets ? 0 : next + 1;
  }
  state.counters["frame_sets"] = static_cast<double>(sets);
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(kWidth) * kHeight * 3 / 2);
}

}  // namespace zvbench
