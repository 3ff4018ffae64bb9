// What every zvtran subcommand shares: option parsing, sizes and their limits,
// raw frame files and transition names.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/image.h"

namespace zvcli {

// Bad input from the user: printed as one line on stderr, exit status 2.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
// A failure while doing the work (I/O): one line on stderr, exit status 1.
struct RunError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
// --help was asked for and its text is on stdout: exit status 0.
struct HelpShown {};

// The largest frame side the subcommands that take sizes accept (apply,
// rgb2yuv, yuv2rgb, resize, render): an 8192 x 8192 frame is 96 MiB.
constexpr int kMaxFrameSide = 8192;

struct Size {
  int width = 0;
  int height = 0;
};

// Options of the form --name VALUE or --name=VALUE (the last one given wins;
// "output" is also -o), flags of the form --name, and positional arguments,
// parsed by CLI11. Unknown options are usage errors; --help prints `usage` and
// the options on stdout and throws HelpShown.
class Args {
 public:
  Args(const std::string& command, const std::string& usage, int argc, char** argv,
       const std::set<std::string>& value_options, const std::set<std::string>& flag_options = {});

  const std::vector<std::string>& positional() const { return positional_; }
  bool has(const std::string& name) const { return flags_.count(name) || get(name).has_value(); }
  std::optional<std::string> get(const std::string& name) const;
  std::vector<std::string> get_all(const std::string& name) const;
  std::string require(const std::string& name) const;
  int get_int(const std::string& name, int fallback) const;
  double get_double(const std::string& name, double fallback) const;
  std::optional<Size> get_size(const std::string& name) const;

 private:
  std::vector<std::string> positional_;
  std::map<std::string, std::vector<std::string>> values_;  // in the order given
  std::set<std::string> flags_;
};

int parse_int(const std::string& text, const std::string& what);
double parse_double(const std::string& text, const std::string& what);
// "WxH"; signed values are accepted (hosts can hand such sizes over).
Size parse_size(const std::string& text, const std::string& what);
// A usage error unless each side lies in -kMaxFrameSide (0 without
// `allow_negative`) to kMaxFrameSide.
Size checked_frame_size(Size size, const std::string& what, bool allow_negative);

std::vector<uint8_t> read_file(const std::string& path);
// Whether `path` ends with `extension` (".mp4"), in any letter case.
bool has_extension(const std::string& path, const std::string& extension);
// Bytes of a raw planar 4:2:0 frame: Y, then U and V of (W/2) x (H/2).
size_t raw_frame_bytes(Size size);
// Fills `image`'s planes from one raw frame (which holds their bytes exactly).
void load_raw_frame(Image& image, const std::vector<uint8_t>& bytes);
// The planes of `image`, Y then U then V.
std::vector<uint8_t> raw_frame(const Image& image);

// Prepares the library as a host does at start-up (registration), once.
void load_transitions();
// A failure (one line naming the cause) unless transition `id` can draw here:
// the OpenGL transitions need an OpenGL context, which may be missing on a
// machine without a driver.
void require_drawable(int id);
// The same for a transition named `name` that draws with OpenGL (the GLSL ones).
void require_opengl(const std::string& name);
// A transition id from an id or a display name (any case, as style names);
// a usage error otherwise.
int resolve_transition(const std::string& text);

}  // namespace zvcli
