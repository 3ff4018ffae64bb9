#include "cli/atomic_output.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <unistd.h>

#include "cli/cli_common.h"

namespace zvcli {

namespace fs = std::filesystem;

AtomicOutput::AtomicOutput(const std::string& final_path, Kind kind) : final_(final_path), kind_(kind) {
  static std::atomic<int> counter{0};
  std::string trimmed = final_path;
  while (trimmed.size() > 1 && trimmed.back() == '/') trimmed.pop_back();
  target_ = trimmed;
  temp_ = target_.parent_path() / ("." + target_.filename().string() + ".part-" + std::to_string(getpid()) + "-" +
                                   std::to_string(counter++));
  std::error_code error;
  if (kind == kFolder) {
    if (!fs::create_directory(temp_, error)) fail(error ? error.message() : "the name is taken");
  } else {
    stream_ = std::fopen(temp_.c_str(), "wb");
    if (!stream_) fail(std::strerror(errno));
  }
}

AtomicOutput::~AtomicOutput() {
  if (stream_) std::fclose(stream_);
  if (committed_) return;
  std::error_code ignored;
  fs::remove_all(temp_, ignored);
}

void AtomicOutput::fail(const std::string& reason) const { throw RunError(final_ + ": cannot write: " + reason); }

std::FILE* AtomicOutput::stream() {
  if (!stream_) {
    stream_ = std::fopen(temp_.c_str(), "ab");
    if (!stream_) fail(std::strerror(errno));
  }
  return stream_;
}

void AtomicOutput::write(const void* data, size_t size) {
  if (size && std::fwrite(data, 1, size, stream()) != size) fail(std::strerror(errno));
}

void AtomicOutput::write_member(const std::string& name, const std::vector<uint8_t>& bytes) {
  const fs::path member = temp_ / name;
  std::FILE* f = std::fopen(member.c_str(), "wb");
  if (!f) fail(std::strerror(errno));
  bool ok = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  const int saved = errno;
  ok = std::fclose(f) == 0 && ok;
  if (!ok) fail(std::strerror(errno ? errno : saved));
}

void AtomicOutput::commit() {
  if (stream_) {
    std::FILE* f = stream_;
    stream_ = nullptr;
    const bool written = std::fflush(f) == 0 && !std::ferror(f);
    const int saved = errno;
    if (std::fclose(f) != 0 || !written) fail(std::strerror(written ? errno : saved));
  }
  std::error_code error;
  fs::rename(temp_, target_, error);
  if (error) fail(error.message());
  committed_ = true;
}

void write_file_atomically(const std::string& path, const std::vector<uint8_t>& bytes) {
  AtomicOutput out(path, AtomicOutput::kFile);
  out.write(bytes.data(), bytes.size());
  out.commit();
}

void flush_stdout() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
    throw RunError(std::string("cannot write to standard output: ") + std::strerror(errno ? errno : EIO));
  }
}

}  // namespace zvcli
