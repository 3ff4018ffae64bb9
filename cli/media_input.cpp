#include "cli/media_input.h"

#include <cmath>
#include <filesystem>
#include <system_error>

#include "cli/av_support.h"

namespace zvcli {
namespace {

struct FormatClose {
  void operator()(AVFormatContext* f) const { avformat_close_input(&f); }
};

// Decodes pictures in order, keeping the one on screen and the one after it,
// so that frames can be sampled at any rising sequence of times.
class MediaFile : public FrameSource {
 public:
  explicit MediaFile(const std::string& path) : path_(path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) throw UsageError(path + ": no such file");
    if (std::filesystem::is_directory(status)) throw UsageError(path + ": is a folder, not a media file");
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0) throw not_media();
    format_.reset(format);
    if (avformat_find_stream_info(format, nullptr) < 0) throw not_media();
    const AVCodec* codec = nullptr;
    stream_ = av_find_best_stream(format, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (stream_ < 0 || !codec) throw not_media();
    const AVStream* stream = format->streams[stream_];
    decoder_.reset(avcodec_alloc_context3(codec));
    if (!decoder_) throw std::bad_alloc();
    avcodec_parameters_to_context(decoder_.get(), stream->codecpar);
    // Each decoding thread holds pictures of its own (about 5 MB each at
    // 1080p); one keeps up with the encoder, which is what an MP4 render
    // waits for, and keeps a 1080p render of two media clips under 180 MB.
    decoder_->thread_count = 1;
    if (avcodec_open2(decoder_.get(), codec, nullptr) < 0) throw not_media();
    time_base_ = av_q2d(stream->time_base);
    AVRational rate = stream->avg_frame_rate.num ? stream->avg_frame_rate : stream->r_frame_rate;
    rate_ = rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 0;
    if (stream->duration != AV_NOPTS_VALUE) {
      length_ = stream->duration * time_base_;
    } else if (format->duration != AV_NOPTS_VALUE) {
      length_ = static_cast<double>(format->duration) / AV_TIME_BASE;
    }
    current_ = alloc_frame();
    next_ = alloc_frame();
    packet_ = alloc_packet();
    if (!decode(*current_, current_time_)) throw UsageError(path + ": holds no picture that can be decoded");
    has_next_ = decode(*next_, next_time_);
    if (!has_next_) length_ = 0;  // a still
  }

  Size size() const override { return {current_->width, current_->height}; }
  double frame_rate() const override { return length_ > 0 ? rate_ : 0; }
  double length() const override { return length_; }

  void frame_at(double seconds, Image& out) override {
    while (has_next_ && next_time_ <= seconds + 1e-6) {
      std::swap(current_, next_);
      current_time_ = next_time_;
      has_next_ = decode(*next_, next_time_);
    }
    converter_.to_image(*current_, out);
  }

 private:
  UsageError not_media() const { return UsageError(path_ + ": not a media file FFmpeg can decode"); }

  // The next picture and its time from the first one; false at the end (a
  // damaged packet ends the clip there).
  bool decode(AVFrame& frame, double& time) {
    if (!decode_next(format_.get(), decoder_.get(), packet_.get(), stream_, at_end_, frame)) return false;
    int64_t pts = frame.best_effort_timestamp;
    double t = pts != AV_NOPTS_VALUE ? pts * time_base_ : decoded_ * (rate_ > 0 ? 1 / rate_ : 0.04);
    if (decoded_++ == 0) first_time_ = t;
    time = t - first_time_;
    return true;
  }

  std::string path_;
  std::unique_ptr<AVFormatContext, FormatClose> format_;
  CodecPtr decoder_;
  PacketPtr packet_;
  FramePtr current_, next_;
  PictureConverter converter_;
  int stream_ = -1;
  double time_base_ = 0, rate_ = 0, length_ = 0;
  double current_time_ = 0, next_time_ = 0, first_time_ = 0;
  long decoded_ = 0;
  bool has_next_ = false, at_end_ = false;
};

}  // namespace

std::unique_ptr<FrameSource> open_media_file(const std::string& path) { return std::make_unique<MediaFile>(path); }

}  // namespace zvcli
