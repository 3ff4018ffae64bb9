// Mosaic Based Wipe: b replaces a block by block on a grid, first every other
// block (a checkerboard), then the complement.
#pragma once

#include <cstdint>

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL mosaic_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

// The grid: X block columns and Y block rows (both even) of block_width x
// block_height samples.
struct MosaicGrid {
  int columns;
  int rows;
  int block_width;
  int block_height;
};

// X from param1 and Y from param2: defaulted, limited, made even and adjusted.
int mosaic_columns(int32_t param1);
int mosaic_rows(double param2);

// The luma grid of an output `width` x `height`.
MosaicGrid mosaic_grid(int columns, int rows, int width, int height);

}  // namespace zv
