#include "wipes/wipe_pieces.h"

namespace zv {

void draw_pieces_reference(const CommonRegion& c, const PieceList& pieces) {
  for (int y = 0; y < c.height; ++y) {
    uint8_t* out = row_at(c.out, c.out_stride, y);
    for (int x = 0; x < c.width; ++x) {
      for (int i = pieces.count - 1; i >= 0; --i) {
        const Piece& p = pieces.piece[i];
        if (x < p.x || x >= p.x + p.width || y < p.y || y >= p.y + p.height) continue;
        out[x] = picture_row(c, p.pic, p.sy + (y - p.y))[p.sx + (x - p.x)];
        break;
      }
    }
  }
}

void draw_pieces_fast(const CommonRegion& c, const PieceList& pieces) {
  for (int i = 0; i < pieces.count; ++i) {
    const Piece& p = pieces.piece[i];
    const bool from_a = p.pic == Pic::kA;
    const int stride = from_a ? c.a_stride : c.b_stride;
    copy_block(p.sx, p.width, p.height, c.out_stride, stride, row_at(c.out, c.out_stride, p.y) + p.x,
               row_at(from_a ? c.a : c.b, stride, p.sy));
  }
}

void draw_pieces(const RowKernels& kernels, const CommonRegion& c, const PieceList& pieces) {
  if (kernels.reference) {
    draw_pieces_reference(c, pieces);
  } else {
    draw_pieces_fast(c, pieces);
  }
}

}  // namespace zv
