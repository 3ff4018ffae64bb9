// Each SIMD row against its C row on one 1920-sample row (the C rows with
// reference:1).
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "frame/row_kernels.h"

namespace {

constexpr int kRow = 1920;

struct RowData {
  std::vector<uint8_t> a, b, pick, out, wide, wide2;
  std::vector<uint16_t> g;
  // wide, wide2: rows of 1920 pixels of 3 or 4 bytes.
  RowData() : a(kRow), b(kRow), pick(kRow), out(kRow), wide(kRow * 4), wide2(kRow * 4), g(kRow) {
    std::mt19937 gen(3);
    for (auto& byte : wide) byte = static_cast<uint8_t>(gen());
    for (auto& byte : wide2) byte = static_cast<uint8_t>(gen());
    for (int i = 0; i < kRow; ++i) {
      a[i] = static_cast<uint8_t>(gen());
      b[i] = static_cast<uint8_t>(gen());
      pick[i] = gen() % 2 ? 0xFF : 0;
      g[i] = static_cast<uint16_t>(gen() % 257);
    }
  }
};

template <typename Call>
void run_row(benchmark::State& state, Call call) {
  static RowData d;
  const zv::RowKernels& rows = state.range(0) ? zv::c_rows() : zv::simd_rows();
  for (auto _ : state) {
    call(rows, d);
    benchmark::DoNotOptimize(d.out.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kRow);
}

void BM_RowBlend(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) { r.blend(d.out.data(), d.a.data(), d.b.data(), kRow, 97); });
}
void BM_RowBlendWeights(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) {
    r.blend_weights(d.out.data(), d.a.data(), d.b.data(), d.g.data(), kRow);
  });
}
void BM_RowScaleLuma(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) { r.scale_luma(d.out.data(), d.a.data(), kRow, 97); });
}
void BM_RowScaleChroma(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) { r.scale_chroma(d.out.data(), d.a.data(), kRow, 97); });
}
void BM_RowOffsetSaturate(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) { r.offset_saturate(d.out.data(), d.a.data(), kRow, -60); });
}
void BM_RowOffsetWrap(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) { r.offset_wrap(d.out.data(), d.a.data(), kRow, 150); });
}
void BM_RowSelect(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) {
    r.select(d.out.data(), d.a.data(), d.b.data(), d.pick.data(), kRow);
  });
}
void BM_RowYuvToBgr(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) {
    r.yuv_to_bgr(d.wide.data(), d.a.data(), d.b.data(), d.pick.data(), kRow);
  });
}
void BM_RowBgrToYuv(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) {
    r.bgr_to_yuv(d.out.data(), d.a.data(), d.b.data(), d.pick.data(), d.wide.data(), d.wide2.data(), kRow);
  });
}
void BM_RowBgrToRgba(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) { r.bgr_to_rgba(d.wide2.data(), d.wide.data(), kRow); });
}
void BM_RowYuvToRgba(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) {
    r.yuv_to_rgba(d.wide.data(), d.a.data(), d.b.data(), d.pick.data(), kRow);
  });
}
void BM_RowRgbaToYuv(benchmark::State& s) {
  run_row(s, [](const zv::RowKernels& r, RowData& d) {
    r.rgba_to_yuv(d.out.data(), d.a.data(), d.b.data(), d.pick.data(), d.wide.data(), d.wide2.data(), kRow);
  });
}

BENCHMARK(BM_RowBlend)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowBlendWeights)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowScaleLuma)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowScaleChroma)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowOffsetSaturate)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowOffsetWrap)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowSelect)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowYuvToBgr)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowBgrToYuv)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowBgrToRgba)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowYuvToRgba)->Arg(0)->Arg(1)->ArgName("reference");
BENCHMARK(BM_RowRgbaToYuv)->Arg(0)->Arg(1)->ArgName("reference");

}  // namespace
