// A 5x7 pixel font for labelling pictures without a font library.
#pragma once

#include <cstdint>
#include <string>

#include "cli/av_support.h"

namespace zvcli {

// Pixels `text` takes across at `scale` (each glyph cell is 6 x 8 units).
int text_width(const std::string& text, int scale);
// Draws UTF-8 `text` at (x, y), the top left of the first cell, as
// fold_to_ascii gives it (accented Latin letters without their marks, other
// characters as '?'). Pixels outside the picture are skipped.
void draw_text(RgbPicture& picture, int x, int y, const std::string& text, int scale, const uint8_t rgb[3]);

}  // namespace zvcli
