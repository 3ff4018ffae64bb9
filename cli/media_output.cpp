#include "cli/media_output.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <unistd.h>

extern "C" {
#include <libavutil/opt.h>
}

#include "cli/atomic_output.h"
#include "cli/av_support.h"
#include "cli/bitmap_font.h"

namespace zvcli {
namespace {

namespace fs = std::filesystem;

bool ends_with(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

AVRational frame_rate_of(double fps) { return av_d2q(fps, 100000); }

struct OutputClose {
  void operator()(AVFormatContext* f) const {
    if (f->pb) avio_closep(&f->pb);
    avformat_free_context(f);
  }
};

// H.264 in an MP4 file, which browsers play inline. Falls back to another
// H.264 encoder, then to MPEG-4 video, when libx264 is missing.
class Mp4Sink : public FrameSink {
 public:
  Mp4Sink(const std::string& path, const OutputInfo& info) : temp_(path, AtomicOutput::kFile) {
    quiet_av_log();
    AVFormatContext* format = nullptr;
    if (avformat_alloc_output_context2(&format, nullptr, "mp4", temp_.temp_path().c_str()) < 0) {
      throw RunError("this FFmpeg cannot write MP4 files");
    }
    format_.reset(format);
    open_encoder(info);
    AVStream* stream = avformat_new_stream(format, nullptr);
    if (!stream) throw std::bad_alloc();
    avcodec_parameters_from_context(stream->codecpar, encoder_.get());
    stream->time_base = encoder_->time_base;
    stream->avg_frame_rate = encoder_->framerate;
    if (info.audio) audio_ = std::make_unique<AudioTrack>(*info.audio, format);
    if (int rc = avio_open(&format->pb, temp_.temp_path().c_str(), AVIO_FLAG_WRITE); rc < 0) {
      throw RunError(path + ": cannot write: " + av_error_text(rc));
    }
    AVDictionary* options = nullptr;
    av_dict_set(&options, "movflags", "+faststart", 0);
    int rc = avformat_write_header(format, &options);
    av_dict_free(&options);
    if (rc < 0) throw RunError(path + ": cannot start the MP4 file: " + av_error_text(rc));
    if (audio_) audio_->write();  // small: the muxer holds it until the video catches up
    stream_ = stream;
    frame_ = alloc_frame();
    packet_ = alloc_packet();
  }

  void write(const Image& image, int) override {
    image_as_frame(image, *frame_);
    frame_->pts = next_pts_++;
    send(frame_.get());
  }

  void finish() override {
    send(nullptr);
    if (int rc = av_write_trailer(format_.get()); rc < 0) temp_.fail(av_error_text(rc));
    if (int rc = avio_closep(&format_->pb); rc < 0) temp_.fail(av_error_text(rc));
    temp_.commit();
  }

 private:
  void open_encoder(const OutputInfo& info) {
    const AVCodec* candidates[] = {avcodec_find_encoder_by_name("libx264"), avcodec_find_encoder(AV_CODEC_ID_H264),
                                   avcodec_find_encoder(AV_CODEC_ID_MPEG4)};
    for (const AVCodec* codec : candidates) {
      if (!codec) continue;
      CodecPtr context(avcodec_alloc_context3(codec));
      if (!context) throw std::bad_alloc();
      context->width = info.size.width;
      context->height = info.size.height;
      context->pix_fmt = AV_PIX_FMT_YUV420P;
      context->framerate = frame_rate_of(info.fps);
      context->time_base = av_inv_q(context->framerate);
      context->gop_size = 50;
      context->thread_count = info.encoder_threads;
      if (format_->oformat->flags & AVFMT_GLOBALHEADER) context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
      AVDictionary* options = nullptr;
      if (codec->id == AV_CODEC_ID_H264) {
        av_dict_set(&options, "preset", "veryfast", 0);
        av_dict_set_int(&options, "crf", info.video_quality, 0);
        // No look-ahead, no B-frames and threads over slices of one picture:
        // libx264 then holds a few pictures instead of twenty (about 13 MB
        // each at 1080p), which keeps a 1080p render well under 200 MB, for
        // files about half as large again at the same quality.
        av_dict_set(&options, "tune", "zerolatency", 0);
      } else {
        context->qmin = context->qmax = 2;
      }
      int rc = avcodec_open2(context.get(), codec, &options);
      av_dict_free(&options);
      if (rc >= 0) {
        encoder_ = std::move(context);
        return;
      }
    }
    throw RunError("this FFmpeg has no working H.264 or MPEG-4 encoder");
  }

  void send(const AVFrame* frame) {
    int rc = avcodec_send_frame(encoder_.get(), frame);
    while (rc >= 0) {
      rc = avcodec_receive_packet(encoder_.get(), packet_.get());
      if (rc < 0) break;
      av_packet_rescale_ts(packet_.get(), encoder_->time_base, stream_->time_base);
      packet_->stream_index = stream_->index;
      rc = av_interleaved_write_frame(format_.get(), packet_.get());
    }
    if (rc != AVERROR(EAGAIN) && rc != AVERROR_EOF) throw RunError("video encoding failed: " + av_error_text(rc));
  }

  AtomicOutput temp_;
  std::unique_ptr<AVFormatContext, OutputClose> format_;
  std::unique_ptr<AudioTrack> audio_;
  CodecPtr encoder_;
  AVStream* stream_ = nullptr;
  FramePtr frame_;
  PacketPtr packet_;
  int64_t next_pts_ = 0;
};

// One PNG per frame, frame-00001.png onwards, in a folder that appears whole.
class PngFolderSink : public FrameSink {
 public:
  PngFolderSink(const std::string& path, const OutputInfo&) : temp_(path, AtomicOutput::kFolder) { quiet_av_log(); }
  void write(const Image& frame, int) override {
    char name[32];
    std::snprintf(name, sizeof name, "frame-%05d.png", ++count_);
    temp_.write_member(name, encode_png(converter_.to_rgb(frame, frame.width, frame.height)));
  }
  void finish() override { temp_.commit(); }

 private:
  AtomicOutput temp_;
  PictureConverter converter_;
  int count_ = 0;
};

// A row of frames at 0, 25, 50, 75 and 100 % of the transition, headed by
// the transition's name and style, each frame labelled with its percentage.
class ContactSheetSink : public FrameSink {
 public:
  ContactSheetSink(const std::string& path, const OutputInfo& info) : temp_(path, AtomicOutput::kFile), info_(info) {
    quiet_av_log();
    thumb_width_ = std::min(info.size.width, kMaxThumbWidth);
    thumb_height_ = std::max(1, static_cast<int>(static_cast<long>(info.size.height) * thumb_width_ / info.size.width));
  }
  void write(const Image& frame, int transition_index) override {
    for (int k = 0; k < kShots; ++k) {
      if (transition_index >= 0 && transition_index == shot_index(k)) {
        shots_[k] = converter_.to_rgb(frame, thumb_width_, thumb_height_);
      }
    }
  }
  void finish() override {
    const int text_height = 8 * kScale;
    RgbPicture sheet;
    sheet.width = 2 * kMargin + kShots * thumb_width_ + (kShots - 1) * kGap;
    sheet.height = 2 * kMargin + 3 * text_height + 2 * kGap + kGap / 2 + thumb_height_;
    sheet.pixels.resize(static_cast<size_t>(sheet.width) * sheet.height * 3);
    for (size_t i = 0; i < sheet.pixels.size(); i += 3) {
      sheet.pixels[i] = 28, sheet.pixels[i + 1] = 30, sheet.pixels[i + 2] = 36;
    }
    const uint8_t white[3] = {240, 240, 240}, grey[3] = {170, 176, 190};
    draw_text(sheet, kMargin, kMargin, info_.title, kScale, white);
    draw_text(sheet, kMargin, kMargin + text_height + kGap / 2, info_.subtitle, kScale, grey);
    const int top = kMargin + 2 * text_height + kGap + kGap / 2;
    for (int k = 0; k < kShots; ++k) {
      const int left = kMargin + k * (thumb_width_ + kGap);
      if (shots_[k].width == thumb_width_) {
        for (int y = 0; y < thumb_height_; ++y) {
          std::memcpy(sheet.row(top + y) + left * 3, shots_[k].row(y), static_cast<size_t>(thumb_width_) * 3);
        }
      }
      std::string label = std::to_string(k * 25) + "%";
      draw_text(sheet, left + (thumb_width_ - text_width(label, kScale)) / 2, top + thumb_height_ + kGap, label, kScale,
                white);
    }
    const std::vector<uint8_t> png = encode_png(sheet);
    temp_.write(png.data(), png.size());
    temp_.commit();
  }

 private:
  static constexpr int kShots = 5, kMaxThumbWidth = 320, kMargin = 12, kGap = 8, kScale = 2;
  int shot_index(int k) const { return (k * (info_.transition_frames - 1) + 2) / 4; }

  AtomicOutput temp_;
  OutputInfo info_;
  PictureConverter converter_;
  RgbPicture shots_[kShots];
  int thumb_width_ = 0, thumb_height_ = 0;
};

}  // namespace

std::unique_ptr<FrameSink> open_media_sink(const std::string& path, const OutputInfo& info) {
  const std::string ext = lower(path.substr(path.rfind('.') == std::string::npos ? path.size() : path.rfind('.')));
  if (ext == ".mp4") return std::make_unique<Mp4Sink>(path, info);
  if (ext == ".png") return std::make_unique<ContactSheetSink>(path, info);
  const size_t slash = path.rfind('/');
  const bool no_extension = path.find('.', slash == std::string::npos ? 0 : slash + 1) == std::string::npos;
  std::error_code error;
  const bool folder = fs::is_directory(path, error);
  if (ends_with(path, "/") || folder || no_extension) {
    if (folder && !fs::is_empty(path, error)) {
      throw UsageError(path + ": the folder is not empty (frames go into a new or empty folder)");
    }
    // Something that exists and is no folder (a file, /dev/full) is not taken for one.
    if (!folder && fs::exists(fs::symlink_status(path, error))) {
      throw UsageError(path + ": is not a folder (frames go into a new or empty folder; name a .mp4, .y4m or .png)");
    }
    return std::make_unique<PngFolderSink>(path, info);
  }
  throw UsageError(path + ": unknown output kind '" + ext + "' (use .mp4, .y4m, .png, a folder, or - for Y4M on stdout)");
}

}  // namespace zvcli
