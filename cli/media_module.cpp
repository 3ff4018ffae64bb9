#include "cli/media_module.h"

#include <dlfcn.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/cli_common.h"
#include "cli/media_input.h"
#include "cli/patterns.h"
#include "cli/y4m_io.h"

namespace zvcli {
namespace {

// The folder the program runs from; the module lies at a path relative to it.
std::string program_folder() {
  std::string path(4096, '\0');
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
  if (length <= 0) return ".";
  path.resize(static_cast<size_t>(length));
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash);
}

const MediaModule* load_module() {
  const std::string path = program_folder() + "/" ZV_MEDIA_MODULE_DIR "/zvtran-media.so";
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) throw RunError(std::string("cannot load FFmpeg's part of zvtran: ") + dlerror());
  auto entry = reinterpret_cast<const MediaModule* (*)()>(dlsym(handle, "zvtran_media_module"));
  if (!entry) throw RunError(path + ": not zvtran's media module");
  return entry();  // kept loaded until the program ends
}

// Frames rendered only to be dropped: `-o /dev/null`, for timing a render.
class DiscardingSink : public FrameSink {
 public:
  void write(const Image&, int) override {}
  void finish() override {}
};

// The null device by any name (a link to it too).
bool is_null_device(const std::string& path) {
  struct stat given, null;
  return stat(path.c_str(), &given) == 0 && S_ISCHR(given.st_mode) && stat("/dev/null", &null) == 0 &&
         given.st_rdev == null.st_rdev;
}

}  // namespace

const MediaModule& media_module() {
  static std::once_flag once;
  static const MediaModule* module = nullptr;
  std::call_once(once, [] { module = load_module(); });
  return *module;
}

std::unique_ptr<FrameSource> open_source(const std::string& name) {
  const std::string prefix = kPatternPrefix;
  if (name.compare(0, prefix.size(), prefix) == 0) return open_pattern(name.substr(prefix.size()));
  if (std::unique_ptr<FrameSource> y4m = open_y4m(name)) return y4m;
  return media_module().open_file(name);
}

std::unique_ptr<FrameSink> open_sink(const std::string& path, const OutputInfo& info) {
  if (is_null_device(path)) return std::make_unique<DiscardingSink>();
  if (path == "-" || has_extension(path, ".y4m")) return open_y4m_sink(path, info);
  return media_module().open_sink(path, info);
}

}  // namespace zvcli
