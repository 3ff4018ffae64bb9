// The sound of a render: A's audio up to the end of the transition and B's
// from its start, crossfaded over it, mixed by FFmpeg's filters and encoded
// as AAC beside the video.
#pragma once

#include <memory>
#include <string>

struct AVFormatContext;

namespace zvcli {

struct AudioMix {
  std::string a, b;        // media files; empty for a clip that plays silence
  double a_start = 0;      // where in A the output's first sample comes from, seconds
  double a_length = 0;     // seconds of A: before and during the transition
  double b_length = 0;     // seconds of B: during and after it
  double crossfade = 0;    // the transition's length
};

// Whether `name` is a media file with an audio stream FFmpeg decodes.
bool has_audio(const std::string& name);

class AudioTrack {
 public:
  // Adds the audio stream to `format`, before its header is written.
  AudioTrack(const AudioMix& mix, AVFormatContext* format);
  ~AudioTrack();
  AudioTrack(const AudioTrack&) = delete;
  AudioTrack& operator=(const AudioTrack&) = delete;
  // Decodes, mixes and encodes the whole track into `format` (after its header).
  void write();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace zvcli
