// Surfaces drawn column by column, as the software 3D effects draw them: a
// source column stretched onto a shorter output column, neighbouring columns
// that share a top and a height copied together as spans, and the shading of
// turned surfaces and of the backs of pages.
#pragma once

#include <cstdint>
#include <vector>

#include "frame/transition_op.h"

namespace zv {

// The source row of target row k when src_h rows are stretched to h.
inline ptrdiff_t stretch_row(int k, int src_h, int h) { return truncate_to_int(static_cast<double>(k) * src_h / h + 0.5); }

// Column `source` (src_h samples) stretched to h samples of column `target`:
// target sample k takes source sample stretch_row(k, src_h, h); nothing when h <= 0.
void StretchColumn(int h, int src_h, int target_stride, int source_stride, uint8_t* target, const uint8_t* source);

// StretchColumn for `run` neighbouring columns at once, one span per row.
void stretch_column_run(int h, int src_h, int run, int target_stride, int source_stride, uint8_t* target,
                        const uint8_t* source);

// Calls draw(i0, i1) for each run [i0, i1) of consecutive columns 0..n-1 that
// have the same key(i).
template <typename Key, typename Draw>
void for_each_column_run(int n, Key&& key, Draw&& draw) {
  int i0 = 0;
  while (i0 < n) {
    const auto k = key(i0);
    int i1 = i0 + 1;
    while (i1 < n && key(i1) == k) ++i1;
    draw(i0, i1);
    i0 = i1;
  }
}

// Luma pulled toward video black by a weight k in 0..256 (256 leaves it,
// black stays black); the product is shifted arithmetically.
inline uint8_t shade_luma(int y, int k) { return static_cast<uint8_t>(16 + (((y - 16) * k) >> 8)); }

// The reverse side of a folded-over page: washed out and half saturated.
inline uint8_t paper_back(int v, bool chroma) {
  return static_cast<uint8_t>(chroma ? 128 + ((v - 128) >> 1) : 48 + (((v - 16) * 3) >> 2));
}

// n output columns of a surface, left to right from output column `first`:
// column j shows source column source[j], stretched from the source's rows
// into height[j] rows from row top[j], its luma shaded by shade[j] (256: not
// shaded; chroma never is).
struct SurfaceColumns {
  int first = 0;
  std::vector<int> source, top, height, shade;

  int size() const { return static_cast<int>(source.size()); }
  void add(int source_column, int top_row, int rows, int weight) {
    source.push_back(source_column);
    top.push_back(top_row);
    height.push_back(rows);
    shade.push_back(weight);
  }
};

// Draws the surface over the output: the plain formulas column by column, or
// (fast) row by row, runs of columns with equal top and height sharing one
// row map.
void draw_surface_reference(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride,
                            uint8_t* out, const uint8_t* source);
void draw_surface_fast(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride, uint8_t* out,
                       const uint8_t* source);
void draw_surface(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride, uint8_t* out,
                  const uint8_t* source);

}  // namespace zv
