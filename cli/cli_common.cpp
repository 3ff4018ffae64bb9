#include "cli/cli_common.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <strings.h>

#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "gl/offscreen_context.h"
#include "host/transition_registry.h"

namespace zvcli {

Args::Args(const std::string& command, const std::string& usage, int argc, char** argv,
           const std::set<std::string>& value_options, const std::set<std::string>& flag_options) {
  CLI::App app(usage, "zvtran " + command);
  app.add_option("arguments", positional_, "positional arguments");
  for (const std::string& name : value_options) {
    std::vector<std::string>& values = values_[name];
    app.add_option(name == "output" ? "-o,--output" : "--" + name, values)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  }
  std::map<std::string, bool> flags;
  for (const std::string& name : flag_options) app.add_flag("--" + name, flags[name]);
  std::vector<std::string> words(argv, argv + argc);
  std::reverse(words.begin(), words.end());  // CLI11 takes them last first
  try {
    app.parse(words);
  } catch (const CLI::CallForHelp&) {
    std::fputs(app.help().c_str(), stdout);
    throw HelpShown{};
  } catch (const CLI::ParseError& e) {
    std::string message = e.what();
    std::replace(message.begin(), message.end(), '\n', ' ');
    throw UsageError(message);
  }
  for (const auto& [name, on] : flags) {
    if (on) flags_.insert(name);
  }
}

std::optional<std::string> Args::get(const std::string& name) const {
  auto found = values_.find(name);
  if (found == values_.end() || found->second.empty()) return std::nullopt;
  return found->second.back();  // the last one given wins
}

std::vector<std::string> Args::get_all(const std::string& name) const {
  auto found = values_.find(name);
  return found == values_.end() ? std::vector<std::string>{} : found->second;
}

std::string Args::require(const std::string& name) const {
  auto value = get(name);
  if (!value) throw UsageError("missing option --" + name);
  return *value;
}

int Args::get_int(const std::string& name, int fallback) const {
  auto value = get(name);
  return value ? parse_int(*value, "--" + name) : fallback;
}

double Args::get_double(const std::string& name, double fallback) const {
  auto value = get(name);
  return value ? parse_double(*value, "--" + name) : fallback;
}

std::optional<Size> Args::get_size(const std::string& name) const {
  auto value = get(name);
  if (!value) return std::nullopt;
  return parse_size(*value, "--" + name);
}

int parse_int(const std::string& text, const std::string& what) {
  errno = 0;
  char* end = nullptr;
  long long value = std::strtoll(text.c_str(), &end, 0);
  if (text.empty() || *end || errno == ERANGE || value < INT32_MIN || value > UINT32_MAX) {
    throw UsageError(what + ": '" + text + "' is not a 32-bit integer");
  }
  return static_cast<int>(static_cast<int64_t>(value));  // 0x80000000..0xFFFFFFFF wrap, as a host's bits would
}

double parse_double(const std::string& text, const std::string& what) {
  char* end = nullptr;
  double value = std::strtod(text.c_str(), &end);
  if (text.empty() || *end) throw UsageError(what + ": '" + text + "' is not a number");
  return value;
}

Size checked_frame_size(Size size, const std::string& what, bool allow_negative) {
  const int lowest = allow_negative ? -kMaxFrameSide : 0;
  if (size.width < lowest || size.width > kMaxFrameSide || size.height < lowest || size.height > kMaxFrameSide) {
    throw UsageError(what + ": " + std::to_string(size.width) + "x" + std::to_string(size.height) +
                     " is outside the sizes accepted (each side " + std::to_string(lowest) + " to " +
                     std::to_string(kMaxFrameSide) + ")");
  }
  return size;
}

Size parse_size(const std::string& text, const std::string& what) {
  size_t x = text.find('x');
  if (x == std::string::npos) throw UsageError(what + ": '" + text + "' is not a size of the form WxH");
  Size size;
  size.width = parse_int(text.substr(0, x), what);
  size.height = parse_int(text.substr(x + 1), what);
  return size;
}

bool has_extension(const std::string& path, const std::string& extension) {
  return path.size() >= extension.size() &&
         strcasecmp(path.c_str() + path.size() - extension.size(), extension.c_str()) == 0;
}

std::vector<uint8_t> read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw UsageError(path + ": cannot open: " + std::strerror(errno));
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

size_t raw_frame_bytes(Size size) {
  long w = size.width > 0 ? size.width : 0, h = size.height > 0 ? size.height : 0;
  return static_cast<size_t>(w * h + 2 * (w / 2) * (h / 2));
}

void load_raw_frame(Image& image, const std::vector<uint8_t>& bytes) {
  size_t offset = 0;
  for (int p = 0; p < 3; ++p) {
    const size_t n = image.plane_size(p);
    if (n == 0) continue;  // an empty file has no bytes to copy from (data() may be null)
    std::memcpy(p == 0 ? image.get_Y() : p == 1 ? image.get_U() : image.get_V(), bytes.data() + offset, n);
    offset += n;
  }
}

std::vector<uint8_t> raw_frame(const Image& image) {
  std::vector<uint8_t> bytes;
  for (int p = 0; p < 3; ++p) {
    const uint8_t* plane = p == 0 ? image.get_Y() : p == 1 ? image.get_U() : image.get_V();
    bytes.insert(bytes.end(), plane, plane + image.plane_size(p));
  }
  return bytes;
}

void load_transitions() {
  static bool loaded = false;
  if (loaded) return;
  if (zvTranInit() != 1) throw RunError("the transition library found no string loader");
  loaded = true;
}

void require_drawable(int id) {
  if (!zv::transition_uses_opengl(id)) return;
  const char* name = transition_get_op_name(id);
  require_opengl(name ? name : "this transition");
}

void require_opengl(const std::string& name) {
  const zv::OffscreenGlStatus& gl = zv::offscreen_gl_status();
  if (gl.available) return;
  throw RunError(name + " draws with OpenGL, and no OpenGL context can be made: " + gl.error);
}

int resolve_transition(const std::string& text) {
  load_transitions();
  char* end = nullptr;
  long id = std::strtol(text.c_str(), &end, 10);
  if (!text.empty() && !*end) {
    if (id < 1 || id > zv::kTransitionCount) {
      throw UsageError("transition id " + text + " is out of range 1-" + std::to_string(zv::kTransitionCount));
    }
    return static_cast<int>(id);
  }
  const int found = transition_find_op_id(text.c_str());
  if (found < 1) throw UsageError("unknown transition '" + text + "' (see: zvtran catalogue)");
  return found;
}

}  // namespace zvcli
