#include "cli/av_support.h"

#include "cli/audio_mix.h"
#include "cli/media_module.h"

#include <mutex>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/error.h>
#include <libavutil/log.h>
}

namespace zvcli {

FramePtr alloc_frame() {
  FramePtr frame(av_frame_alloc());
  if (!frame) throw std::bad_alloc();
  return frame;
}

PacketPtr alloc_packet() {
  PacketPtr packet(av_packet_alloc());
  if (!packet) throw std::bad_alloc();
  return packet;
}

std::string av_error_text(int code) {
  char text[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(code, text, sizeof text);
  return text;
}

bool decode_next(AVFormatContext* format, AVCodecContext* decoder, AVPacket* packet, int stream, bool& at_end,
                 AVFrame& frame) {
  av_frame_unref(&frame);
  for (;;) {
    int rc = avcodec_receive_frame(decoder, &frame);
    if (rc >= 0) return true;
    if (rc != AVERROR(EAGAIN) || at_end) return false;
    rc = av_read_frame(format, packet);
    if (rc < 0) {
      at_end = true;
      avcodec_send_packet(decoder, nullptr);
      continue;
    }
    if (packet->stream_index == stream) avcodec_send_packet(decoder, packet);
    av_packet_unref(packet);
  }
}

void quiet_av_log() {
  static std::once_flag once;
  std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

void PictureConverter::to_image(const AVFrame& frame, Image& out) {
  context_.reset(sws_getCachedContext(context_.release(), frame.width, frame.height,
                                      static_cast<AVPixelFormat>(frame.format), out.width, out.height,
                                      AV_PIX_FMT_YUV420P, SWS_BICUBIC, nullptr, nullptr, nullptr));
  if (!context_) throw RunError("cannot convert a decoded picture of this format");
  uint8_t* planes[4] = {out.get_Y(), out.get_U(), out.get_V(), nullptr};
  int strides[4] = {out.width, out.chroma_width(), out.chroma_width(), 0};
  sws_scale(context_.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
}

RgbPicture PictureConverter::to_rgb(const Image& image, int width, int height) {
  context_.reset(sws_getCachedContext(context_.release(), image.width, image.height, AV_PIX_FMT_YUV420P, width,
                                      height, AV_PIX_FMT_RGB24, SWS_BICUBIC, nullptr, nullptr, nullptr));
  if (!context_) throw RunError("cannot convert a frame to RGB");
  RgbPicture picture{width, height, std::vector<uint8_t>(static_cast<size_t>(width) * height * 3)};
  FramePtr frame = alloc_frame();
  image_as_frame(image, *frame);
  uint8_t* planes[4] = {picture.pixels.data(), nullptr, nullptr, nullptr};
  int strides[4] = {width * 3, 0, 0, 0};
  sws_scale(context_.get(), frame->data, frame->linesize, 0, image.height, planes, strides);
  return picture;
}

void image_as_frame(const Image& image, AVFrame& frame) {
  frame.format = AV_PIX_FMT_YUV420P;
  frame.width = image.width;
  frame.height = image.height;
  frame.data[0] = image.get_Y();
  frame.data[1] = image.get_U();
  frame.data[2] = image.get_V();
  frame.linesize[0] = image.width;
  frame.linesize[1] = frame.linesize[2] = image.chroma_width();
}

std::vector<uint8_t> encode_png(const RgbPicture& picture) {
  const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_PNG);
  if (!codec) throw RunError("this FFmpeg has no PNG encoder");
  CodecPtr context(avcodec_alloc_context3(codec));
  if (!context) throw std::bad_alloc();
  context->width = picture.width;
  context->height = picture.height;
  context->pix_fmt = AV_PIX_FMT_RGB24;
  context->time_base = AVRational{1, 25};
  if (int rc = avcodec_open2(context.get(), codec, nullptr); rc < 0) {
    throw RunError("cannot start the PNG encoder: " + av_error_text(rc));
  }
  FramePtr frame = alloc_frame();
  frame->format = AV_PIX_FMT_RGB24;
  frame->width = picture.width;
  frame->height = picture.height;
  frame->data[0] = const_cast<uint8_t*>(picture.pixels.data());
  frame->linesize[0] = picture.width * 3;
  PacketPtr packet = alloc_packet();
  int rc = avcodec_send_frame(context.get(), frame.get());
  if (rc >= 0) rc = avcodec_send_frame(context.get(), nullptr);
  std::vector<uint8_t> bytes;
  while (rc >= 0 && (rc = avcodec_receive_packet(context.get(), packet.get())) >= 0) {
    bytes.insert(bytes.end(), packet->data, packet->data + packet->size);
    av_packet_unref(packet.get());
  }
  if (rc != AVERROR_EOF) throw RunError("PNG encoding failed: " + av_error_text(rc));
  return bytes;
}

namespace {

class SwsScaler : public PictureScaler {
 public:
  void scale(const Image& from, Image& to) override {
    image_as_frame(from, *frame_);
    converter_.to_image(*frame_, to);
  }

 private:
  FramePtr frame_ = alloc_frame();
  PictureConverter converter_;
};

std::unique_ptr<PictureScaler> new_scaler() { return std::make_unique<SwsScaler>(); }

}  // namespace
}  // namespace zvcli

extern "C" __attribute__((visibility("default"))) const zvcli::MediaModule* zvtran_media_module() {
  zvcli::quiet_av_log();
  static const zvcli::MediaModule module = {zvcli::open_media_file, zvcli::open_media_sink, zvcli::has_audio,
                                            zvcli::new_scaler};
  return &module;
}
