// Small pieces zvtran shares over FFmpeg's libraries: owning pointers, error
// texts, picture conversion into and out of the host's 4:2:0 frames, and PNG
// encoding.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include "cli/cli_common.h"
#include "cli/frame_source.h"
#include "cli/media_output.h"

namespace zvcli {

struct AvFrameFree {
  void operator()(AVFrame* f) const { av_frame_free(&f); }
};
struct AvPacketFree {
  void operator()(AVPacket* p) const { av_packet_free(&p); }
};
struct AvCodecFree {
  void operator()(AVCodecContext* c) const { avcodec_free_context(&c); }
};
struct SwsFree {
  void operator()(SwsContext* s) const { sws_freeContext(s); }
};
using FramePtr = std::unique_ptr<AVFrame, AvFrameFree>;
using PacketPtr = std::unique_ptr<AVPacket, AvPacketFree>;
using CodecPtr = std::unique_ptr<AVCodecContext, AvCodecFree>;

FramePtr alloc_frame();
PacketPtr alloc_packet();
// FFmpeg's text for an error code.
std::string av_error_text(int code);

// The next frame of `stream` from `decoder`, reading packets of `format` as it
// needs them; `at_end` is set once the file has no more. False at the end (a
// damaged packet ends the stream there).
bool decode_next(AVFormatContext* format, AVCodecContext* decoder, AVPacket* packet, int stream, bool& at_end,
                 AVFrame& frame);
// Keeps FFmpeg's own log quiet: zvtran reports failures in its own words.
void quiet_av_log();

// An RGB24 picture, rows packed.
struct RgbPicture {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> pixels;
  uint8_t* row(int y) { return pixels.data() + static_cast<size_t>(y) * width * 3; }
};

// Converts pictures with a cached libswscale context (one per user; not shared
// between threads).
class PictureConverter {
 public:
  PictureConverter() = default;
  PictureConverter(const PictureConverter&) = delete;
  PictureConverter& operator=(const PictureConverter&) = delete;
  // Any decoded picture into `out`, scaled to `out`'s size.
  void to_image(const AVFrame& frame, Image& out);
  // A 4:2:0 frame into RGB24 of the given size.
  RgbPicture to_rgb(const Image& image, int width, int height);

 private:
  std::unique_ptr<SwsContext, SwsFree> context_;
};

// The planes of `image` as a 4:2:0 AVFrame (no copy; valid while `image` is).
void image_as_frame(const Image& image, AVFrame& frame);
std::vector<uint8_t> encode_png(const RgbPicture& picture);

// What the module hands to zvtran (see media_module.h).
std::unique_ptr<FrameSource> open_media_file(const std::string& path);
std::unique_ptr<FrameSink> open_media_sink(const std::string& path, const OutputInfo& info);

}  // namespace zvcli
