// The host's frame: a planar YUV picture with the field layout transitions rely
// on (width and height as the second and third 32-bit words, the chroma format
// as the fourth, the picture size as the thirteenth and fourteenth).
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/host_api.h"

enum ImageChromaFormat { kChroma420 = 1, kChroma422 = 2 };

class ZV_ZORVAN_API Image {
 public:
  // Allocates a zeroed frame; the picture size starts equal to the frame size.
  Image(int width, int height, int chroma_format = kChroma420);
  // Wraps 4:2:0 planes that someone else owns (packed rows, chroma planes of
  // width / 2 by height / 2); they are never freed here.
  Image(int width, int height, uint8_t* y, uint8_t* u, uint8_t* v);
  ~Image();
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  uint8_t* get_Y() const { return planes_[0]; }
  uint8_t* get_U() const { return planes_[1]; }
  uint8_t* get_V() const { return planes_[2]; }
  // Plane 0 (Y), 1 (U) or 2 (V).
  uint8_t* plane(int index) const { return planes_[index]; }

  // Takes the frame flags of `other`.
  void copy_flags(const Image& other);
  // Copies `source` into this frame: its planes when `copy_pixels` is non-zero
  // (over the centred common area when the sizes differ), its flags when
  // `copy_frame_flags` is non-zero.
  void copy(Image* source, int copy_pixels, int copy_frame_flags);
  // Fills the whole frame with an RGB colour, converted to studio-range YUV.
  void set_background_color(int red, int green, int blue);

  int frame_flags() const { return flags_; }
  void set_frame_flags(int flags) { flags_ = flags; }
  // Bytes in plane 0 (Y), 1 (U) or 2 (V); 0 for an empty frame.
  size_t plane_size(int plane) const;
  int chroma_width() const { return width / 2; }
  int chroma_height() const { return chroma_format == kChroma422 ? height : height / 2; }

  int32_t host_word0;      // the host's; never touched by the library
  int32_t width;           // luma width, also the luma row stride
  int32_t height;          // luma rows
  int32_t chroma_format;   // kChroma420 or kChroma422
  int32_t host_words[8];   // the host's
  int32_t picture_width;   // picture proper, may be smaller than width
  int32_t picture_height;

  // The host's own state; public only so the field layout above stays standard.
  int32_t flags_;
  uint8_t* planes_[3];
  bool owns_planes_;
};
