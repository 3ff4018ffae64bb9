#include "cli/audio_mix.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include "cli/av_support.h"

namespace zvcli {
namespace {

constexpr int kSampleRate = 48000;

struct FormatClose {
  void operator()(AVFormatContext* f) const { avformat_close_input(&f); }
};
struct GraphFree {
  void operator()(AVFilterGraph* g) const { avfilter_graph_free(&g); }
};
struct InOutFree {
  void operator()(AVFilterInOut* io) const { avfilter_inout_free(&io); }
};

int64_t samples(double seconds) { return static_cast<int64_t>(std::llround(std::max(0.0, seconds) * kSampleRate)); }

// One input's audio, decoded in order.
class AudioInput {
 public:
  // False when `path` has no decodable audio.
  bool open(const std::string& path) {
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0) return false;
    format_.reset(format);
    if (avformat_find_stream_info(format, nullptr) < 0) return false;
    const AVCodec* codec = nullptr;
    stream_ = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, &codec, 0);
    if (stream_ < 0 || !codec) return false;
    decoder_.reset(avcodec_alloc_context3(codec));
    if (!decoder_) throw std::bad_alloc();
    avcodec_parameters_to_context(decoder_.get(), format->streams[stream_]->codecpar);
    if (avcodec_open2(decoder_.get(), codec, nullptr) < 0) return false;
    if (decoder_->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
      const int channels = decoder_->ch_layout.nb_channels;
      av_channel_layout_uninit(&decoder_->ch_layout);
      av_channel_layout_default(&decoder_->ch_layout, channels);
    }
    packet_ = alloc_packet();
    return decoder_->sample_rate > 0 && decoder_->ch_layout.nb_channels > 0;
  }

  // The buffer source's arguments for this input's samples.
  std::string source_args() const {
    char layout[128] = {};
    av_channel_layout_describe(&decoder_->ch_layout, layout, sizeof layout);
    return "sample_rate=" + std::to_string(decoder_->sample_rate) +
           ":sample_fmt=" + av_get_sample_fmt_name(decoder_->sample_fmt) + ":channel_layout=" + layout +
           ":time_base=1/" + std::to_string(decoder_->sample_rate);
  }
  int sample_rate() const { return decoder_->sample_rate; }

  // The next decoded frame, its time stamp the count of samples before it;
  // false at the end (a damaged packet ends the audio there).
  bool next(AVFrame& frame) {
    if (!decode_next(format_.get(), decoder_.get(), packet_.get(), stream_, at_end_, frame)) return false;
    frame.pts = decoded_;
    decoded_ += frame.nb_samples;
    return true;
  }

 private:
  std::unique_ptr<AVFormatContext, FormatClose> format_;
  CodecPtr decoder_;
  PacketPtr packet_;
  int stream_ = -1;
  int64_t decoded_ = 0;
  bool at_end_ = false;
};

}  // namespace

struct AudioTrack::State {
  AudioMix mix;
  AVFormatContext* format = nullptr;
  AVStream* stream = nullptr;
  CodecPtr encoder;
  std::unique_ptr<AVFilterGraph, GraphFree> graph;
  AVFilterContext* sources[2] = {nullptr, nullptr};
  AVFilterContext* sink = nullptr;
  AudioInput inputs[2];
  bool has_input[2] = {false, false};
  FramePtr frame = alloc_frame();
  PacketPtr packet = alloc_packet();
  int64_t encoded = 0;

  void open_encoder() {
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
    if (!codec) throw RunError("this FFmpeg has no AAC encoder");
    encoder.reset(avcodec_alloc_context3(codec));
    if (!encoder) throw std::bad_alloc();
    encoder->sample_rate = kSampleRate;
    encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
    av_channel_layout_default(&encoder->ch_layout, 2);
    encoder->bit_rate = 160000;
    encoder->time_base = AVRational{1, kSampleRate};
    if (format->oformat->flags & AVFMT_GLOBALHEADER) encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (int rc = avcodec_open2(encoder.get(), codec, nullptr); rc < 0) {
      throw RunError("cannot start the AAC encoder: " + av_error_text(rc));
    }
  }

  // A: from a_start, a_length long; B: from its start, b_length long; each
  // padded with silence when it ends early; then the crossfade.
  void build_graph() {
    graph.reset(avfilter_graph_alloc());
    if (!graph) throw std::bad_alloc();
    const int64_t a_first = samples(mix.a_start), a_count = samples(mix.a_length), b_count = samples(mix.b_length);
    const int64_t overlap = std::max<int64_t>(1, std::min<int64_t>({samples(mix.crossfade), a_count, b_count}));
    const std::string common = "aresample=" + std::to_string(kSampleRate) +
                               ",aformat=sample_fmts=fltp:channel_layouts=stereo,";
    std::string text;
    const char* labels[2] = {"a", "b"};
    const int64_t firsts[2] = {a_first, 0}, counts[2] = {a_count, b_count};
    for (int k = 0; k < 2; ++k) {
      text += has_input[k] ? "[" + std::string(labels[k]) + "]" + common
                           : "anullsrc=r=" + std::to_string(kSampleRate) + ":cl=stereo,";
      text += "atrim=start_sample=" + std::to_string(firsts[k] * has_input[k]) +
              ":end_sample=" + std::to_string(firsts[k] * has_input[k] + counts[k]) +
              ",asetpts=N/SR/TB,apad=whole_len=" + std::to_string(counts[k]) + "[" + labels[k] + "1];";
    }
    text += "[a1][b1]acrossfade=ns=" + std::to_string(overlap) + ":c1=tri:c2=tri[out]";

    const AVFilter* sink_filter = avfilter_get_by_name("abuffersink");
    const AVFilter* source_filter = avfilter_get_by_name("abuffer");
    if (!sink_filter || !source_filter) throw RunError("this FFmpeg has no audio buffer filters");
    if (avfilter_graph_create_filter(&sink, sink_filter, "out", nullptr, nullptr, graph.get()) < 0) {
      throw RunError("cannot set up the audio mix");
    }
    AVFilterInOut* outputs = nullptr;
    for (int k = 1; k >= 0; --k) {
      if (!has_input[k]) continue;
      if (avfilter_graph_create_filter(&sources[k], source_filter, labels[k], inputs[k].source_args().c_str(),
                                       nullptr, graph.get()) < 0) {
        throw RunError("cannot set up the audio mix for this input's audio");
      }
      AVFilterInOut* io = avfilter_inout_alloc();
      io->name = av_strdup(labels[k]);
      io->filter_ctx = sources[k];
      io->pad_idx = 0;
      io->next = outputs;
      outputs = io;
    }
    AVFilterInOut* sink_in = avfilter_inout_alloc();
    sink_in->name = av_strdup("out");
    sink_in->filter_ctx = sink;
    sink_in->pad_idx = 0;
    sink_in->next = nullptr;
    int rc = avfilter_graph_parse_ptr(graph.get(), text.c_str(), &sink_in, &outputs, nullptr);
    std::unique_ptr<AVFilterInOut, InOutFree> left_in(sink_in), left_out(outputs);
    if (rc < 0) throw RunError("cannot set up the audio mix: " + av_error_text(rc));
    if ((rc = avfilter_graph_config(graph.get(), nullptr)) < 0) {
      throw RunError("cannot set up the audio mix: " + av_error_text(rc));
    }
    av_buffersink_set_frame_size(sink, encoder->frame_size);
  }

  // Encodes what the mix has ready (everything once `done`).
  void drain(bool done) {
    for (;;) {
      int rc = av_buffersink_get_frame(sink, frame.get());
      if (rc == AVERROR(EAGAIN) && !done) return;
      if (rc == AVERROR_EOF || rc == AVERROR(EAGAIN)) break;
      if (rc < 0) throw RunError("audio mixing failed: " + av_error_text(rc));
      frame->pts = encoded;
      encoded += frame->nb_samples;
      encode(frame.get());
      av_frame_unref(frame.get());
    }
    encode(nullptr);
  }

  void encode(const AVFrame* samples) {
    int rc = avcodec_send_frame(encoder.get(), samples);
    while (rc >= 0) {
      rc = avcodec_receive_packet(encoder.get(), packet.get());
      if (rc < 0) break;
      av_packet_rescale_ts(packet.get(), encoder->time_base, stream->time_base);
      packet->stream_index = stream->index;
      rc = av_interleaved_write_frame(format, packet.get());
    }
    if (rc != AVERROR(EAGAIN) && rc != AVERROR_EOF) throw RunError("audio encoding failed: " + av_error_text(rc));
  }

  // Feeds input k up to the samples the mix takes from it, then ends it.
  void feed(int k, double seconds_needed) {
    if (!has_input[k]) return;
    FramePtr decoded = alloc_frame();
    const int64_t needed = static_cast<int64_t>(std::ceil(seconds_needed * inputs[k].sample_rate())) + 1;
    while (inputs[k].next(*decoded)) {
      if (av_buffersrc_add_frame_flags(sources[k], decoded.get(), 0) < 0) break;  // a change of format ends it
      drain(false);
      if (decoded->pts >= needed) break;
    }
    if (int rc = av_buffersrc_add_frame_flags(sources[k], nullptr, 0); rc < 0) {
      throw RunError("audio mixing failed: " + av_error_text(rc));
    }
  }
};

bool has_audio(const std::string& name) {
  AudioInput input;
  return input.open(name);
}

AudioTrack::AudioTrack(const AudioMix& mix, AVFormatContext* format) : state_(std::make_unique<State>()) {
  State& s = *state_;
  s.mix = mix;
  s.format = format;
  s.has_input[0] = !mix.a.empty() && s.inputs[0].open(mix.a);
  s.has_input[1] = !mix.b.empty() && s.inputs[1].open(mix.b);
  s.open_encoder();
  s.build_graph();
  s.stream = avformat_new_stream(format, nullptr);
  if (!s.stream) throw std::bad_alloc();
  avcodec_parameters_from_context(s.stream->codecpar, s.encoder.get());
  s.stream->time_base = s.encoder->time_base;
}

AudioTrack::~AudioTrack() = default;

void AudioTrack::write() {
  State& s = *state_;
  s.feed(0, s.mix.a_start + s.mix.a_length);
  s.feed(1, s.mix.b_length);
  s.drain(true);
}

}  // namespace zvcli
