// Triangle doors: the picture, or each cell of a grid, is cut along a
// diagonal into two triangular leaves. Pushing doors swing the leaves on
// hinges at the cell's left and right edges (a swinging leaf is drawn squeezed
// toward its hinge); sliding doors move them straight out sideways. In Open
// the leaves are `a` over `b`; in Close they are `b` coming in over `a`.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL single_triangle_door(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL multi_triangle_door(Image* out, Image* a, Image* b, TransitionParams* params);

// Plane workers; a style past the last one writes nothing.
void triangle_door_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                         int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                         const uint8_t* a_plane, const uint8_t* b_plane);
void multi_triangle_door_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                               int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                               const uint8_t* a_plane, const uint8_t* b_plane);

enum class DoorKind : uint8_t { kSwing, kSlide };
enum class DoorAction : uint8_t { kClose, kOpen };
enum class Diagonal : uint8_t { kFalling, kRising };  // top-left to bottom-right, bottom-left to top-right

// One door over a cell_width x cell_height cell: each row is cut at the
// diagonal's column, `behind` is copied in and the two leaves are drawn over
// it from `leaf`. Nothing happens for an empty cell.
void triangle_door_cell(const RowKernels& kernels, DoorKind kind, DoorAction action, Diagonal diagonal, double progress,
                        int cell_width, int cell_height, int out_stride, int leaf_stride, int behind_stride,
                        uint8_t* out_start, const uint8_t* leaf_start, const uint8_t* behind_start);

}  // namespace zv
