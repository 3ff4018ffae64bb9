#include "cli/cli_common.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <unistd.h>

#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zvcli {

Args::Args(int argc, char** argv, const std::set<std::string>& value_options,
           const std::set<std::string>& flag_options) {
  for (int i = 0; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg.size() < 3 || arg.compare(0, 2, "--") != 0) {
      positional_.push_back(arg);
      continue;
    }
    std::string name = arg.substr(2), value;
    bool inline_value = false;
    if (size_t eq = name.find('='); eq != std::string::npos) {
      value = name.substr(eq + 1);
      name = name.substr(0, eq);
      inline_value = true;
    }
    if (flag_options.count(name) && !inline_value) {
      flags_.insert(name);
    } else if (value_options.count(name)) {
      if (!inline_value) {
        if (i + 1 >= argc) throw UsageError("option --" + name + " needs a value");
        value = argv[++i];
      }
      values_.emplace(name, value);
    } else {
      throw UsageError("unknown option --" + name);
    }
  }
}

std::optional<std::string> Args::get(const std::string& name) const {
  auto range = values_.equal_range(name);
  if (range.first == range.second) return std::nullopt;
  return std::prev(range.second)->second;  // the last one given wins
}

std::vector<std::string> Args::get_all(const std::string& name) const {
  std::vector<std::string> all;
  for (auto [it, end] = values_.equal_range(name); it != end; ++it) all.push_back(it->second);
  return all;
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

std::vector<char*> with_long_output_option(int argc, char** argv) {
  static char long_form[] = "--output";
  std::vector<char*> args(argv, argv + argc);
  for (char*& arg : args) {
    if (std::strcmp(arg, "-o") == 0) arg = long_form;
  }
  return args;
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

Size parse_size(const std::string& text, const std::string& what) {
  size_t x = text.find('x');
  if (x == std::string::npos) throw UsageError(what + ": '" + text + "' is not a size of the form WxH");
  Size size;
  size.width = parse_int(text.substr(0, x), what);
  size.height = parse_int(text.substr(x + 1), what);
  return size;
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

void load_raw_frame(Image& image, const std::vector<uint8_t>& bytes, size_t offset) {
  for (int p = 0; p < 3; ++p) {
    uint8_t* plane = p == 0 ? image.get_Y() : p == 1 ? image.get_U() : image.get_V();
    size_t n = image.plane_size(p);
    std::memcpy(plane, bytes.data() + offset, n);
    offset += n;
  }
}

void append_raw_frame(const Image& image, std::vector<uint8_t>& bytes) {
  for (int p = 0; p < 3; ++p) {
    const uint8_t* plane = p == 0 ? image.get_Y() : p == 1 ? image.get_U() : image.get_V();
    bytes.insert(bytes.end(), plane, plane + image.plane_size(p));
  }
}

void write_file_atomically(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::string temp = path + ".part-" + std::to_string(getpid());
  FILE* f = std::fopen(temp.c_str(), "wb");
  if (!f) throw RunError(path + ": cannot write: " + std::strerror(errno));
  bool ok = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  ok = (std::fclose(f) == 0) && ok;
  if (!ok || std::rename(temp.c_str(), path.c_str()) != 0) {
    std::string reason = std::strerror(errno);
    std::remove(temp.c_str());
    throw RunError(path + ": cannot write: " + reason);
  }
}

void load_transitions() {
  static bool loaded = false;
  if (loaded) return;
  if (zvTranInit() != 1) throw RunError("the transition library found no string loader");
  loaded = true;
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
  int found = transition_get_op_id(text.c_str());
  if (found < 1) throw UsageError("unknown transition '" + text + "' (see: zvtran catalogue)");
  return found;
}

}  // namespace zvcli
