// The part of zvtran that runs on FFmpeg's libraries (decoding media files,
// scaling pictures, H.264 and PNG output, audio) lives in a module of its own,
// zvtran-media.so in the library folder, loaded on first use: those libraries
// pull in well over a hundred shared objects, whose loading would otherwise
// cost every run more than rendering a short clip. A Y4M or pattern render to
// Y4M never loads it.
#pragma once

#include <memory>
#include <string>

#include "cli/frame_source.h"
#include "cli/media_output.h"

namespace zvcli {

// Scales 4:2:0 pictures of any size into another (one per user; not shared
// between threads).
class PictureScaler {
 public:
  virtual ~PictureScaler() = default;
  virtual void scale(const Image& from, Image& to) = 0;
};

struct MediaModule {
  // Any file the libraries decode (a usage error naming it otherwise).
  std::unique_ptr<FrameSource> (*open_file)(const std::string& path);
  // An MP4 file, a contact sheet or a folder of PNGs (a usage error for an
  // unknown kind of output).
  std::unique_ptr<FrameSink> (*open_sink)(const std::string& path, const OutputInfo& info);
  // Whether `path` is a media file with an audio stream the libraries decode.
  bool (*has_audio)(const std::string& path);
  std::unique_ptr<PictureScaler> (*new_scaler)();
};

// The module, loaded on the first call; a RunError when it cannot be loaded.
const MediaModule& media_module();

}  // namespace zvcli

// The module's one entry, looked up by name.
extern "C" const zvcli::MediaModule* zvtran_media_module();
