// What every zvtran subcommand shares: option parsing, sizes, raw frame files
// and output files that appear under their final name only when complete.
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

struct Size {
  int width = 0;
  int height = 0;
};

// Options of the form --name VALUE or --name=VALUE, flags of the form --name,
// and positional arguments. Unknown options are usage errors.
class Args {
 public:
  Args(int argc, char** argv, const std::set<std::string>& value_options,
       const std::set<std::string>& flag_options = {});

  const std::vector<std::string>& positional() const { return positional_; }
  bool has(const std::string& name) const { return values_.count(name) || flags_.count(name); }
  std::optional<std::string> get(const std::string& name) const;
  std::vector<std::string> get_all(const std::string& name) const;
  std::string require(const std::string& name) const;
  int get_int(const std::string& name, int fallback) const;
  double get_double(const std::string& name, double fallback) const;
  std::optional<Size> get_size(const std::string& name) const;

 private:
  std::vector<std::string> positional_;
  std::multimap<std::string, std::string> values_;
  std::set<std::string> flags_;
};

// argv with the short form "-o" spelled "--output", for commands that take it.
std::vector<char*> with_long_output_option(int argc, char** argv);

int parse_int(const std::string& text, const std::string& what);
double parse_double(const std::string& text, const std::string& what);
// "WxH"; signed values are accepted (hosts can hand such sizes over).
Size parse_size(const std::string& text, const std::string& what);

std::vector<uint8_t> read_file(const std::string& path);
// Bytes of a raw planar 4:2:0 frame: Y, then U and V of (W/2) x (H/2).
size_t raw_frame_bytes(Size size);
// Fills `image`'s planes from one raw frame.
void load_raw_frame(Image& image, const std::vector<uint8_t>& bytes, size_t offset = 0);
void append_raw_frame(const Image& image, std::vector<uint8_t>& bytes);

// Writes to a temporary name beside `path` and renames when complete, so a
// failed or interrupted run never leaves a partial file under `path`.
void write_file_atomically(const std::string& path, const std::vector<uint8_t>& bytes);

// Prepares the library as a host does at start-up (registration), once.
void load_transitions();
// A transition id from an id or a display name; a usage error otherwise.
int resolve_transition(const std::string& text);

}  // namespace zvcli
