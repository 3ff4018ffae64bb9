#include "cli/y4m_io.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cmath>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include "cli/atomic_output.h"
#include "cli/media_module.h"

namespace zvcli {
namespace {

constexpr char kFrameLine[] = "FRAME\n";
constexpr size_t kFrameLineBytes = 6;
constexpr int kMaxSide = 8192;
constexpr size_t kMaxHeader = 4096;

struct Header {
  int width = 0, height = 0;
  int rate_num = 25, rate_den = 1;
  std::string colour = "420jpeg";
};

// The stream header's fields; false when `line` is not a Y4M header.
bool parse_header(const std::string& line, Header& header) {
  if (line.compare(0, 10, "YUV4MPEG2 ") != 0) return false;
  size_t at = 10;
  while (at < line.size()) {
    size_t end = line.find(' ', at);
    if (end == std::string::npos) end = line.size();
    const std::string field = line.substr(at, end - at);
    at = end + 1;
    if (field.empty()) continue;
    const char* value = field.c_str() + 1;
    switch (field[0]) {
      case 'W': header.width = std::atoi(value); break;
      case 'H': header.height = std::atoi(value); break;
      case 'F': std::sscanf(value, "%d:%d", &header.rate_num, &header.rate_den); break;
      case 'C': header.colour = value; break;
      default: break;  // interlacing, aspect and extensions change nothing here
    }
  }
  return true;
}

bool fast_form(const Header& h) {
  const bool colour = h.colour == "420jpeg" || h.colour == "420paldv" || h.colour == "420mpeg2" || h.colour == "420";
  return colour && h.width > 0 && h.height > 0 && h.width <= kMaxSide && h.height <= kMaxSide && h.width % 2 == 0 &&
         h.height % 2 == 0 && h.rate_num > 0 && h.rate_den > 0;
}

// Moves `vectors` on past `bytes` that were transferred.
void advance(iovec*& vectors, int& count, size_t bytes) {
  while (count > 0 && (bytes > 0 || vectors->iov_len == 0)) {
    const size_t step = std::min(bytes, vectors->iov_len);
    vectors->iov_base = static_cast<uint8_t*>(vectors->iov_base) + step;
    vectors->iov_len -= step;
    bytes -= step;
    if (vectors->iov_len == 0) ++vectors, --count;
  }
}

// Reads, or preads at `offset` unless it is negative, until every vector is
// full; returns the bytes read, short only at the end of the data.
size_t read_vectors(int fd, iovec* vectors, int count, off_t offset, const std::string& name) {
  size_t done = 0;
  while (count > 0) {
    ssize_t got = offset >= 0 ? preadv(fd, vectors, count, offset + static_cast<off_t>(done)) : readv(fd, vectors, count);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw RunError(name + ": cannot read: " + std::strerror(errno));
    if (got == 0) break;
    done += static_cast<size_t>(got);
    advance(vectors, count, static_cast<size_t>(got));
  }
  return done;
}

void copy_planes(const Image& from, Image& to) {
  for (int p = 0; p < 3; ++p) std::memcpy(to.planes_[p], from.planes_[p], from.plane_size(p));
}

class Y4mBase : public FrameSource {
 public:
  Y4mBase(std::string name, const Header& header)
      : name_(std::move(name)), header_(header), frame_period_(static_cast<double>(header.rate_den) / header.rate_num) {}
  Size size() const override { return {header_.width, header_.height}; }

 protected:
  size_t frame_bytes() const { return static_cast<size_t>(header_.width) * header_.height * 3 / 2; }
  bool same_size(const Image& out) const { return out.width == header_.width && out.height == header_.height; }
  // Whether picture `k + 1` shows at `seconds`.
  bool next_shows(long k, double seconds) const { return (k + 1) * frame_period_ <= seconds + 1e-6; }
  void scale(const Image& from, Image& out) {
    if (!scaler_) scaler_ = media_module().new_scaler();
    scaler_->scale(from, out);
  }

  std::string name_;
  Header header_;
  double frame_period_;
  std::unique_ptr<PictureScaler> scaler_;
};

// A Y4M file: each picture is read at its place with one system call, into
// the caller's frame at the output's size, or into one kept for scaling.
// Reading copies the picture once, from the system's cache; mapping the file
// instead costs more where a hypervisor maps each guest page on first touch.
class Y4mFile : public Y4mBase {
 public:
  Y4mFile(std::string name, int fd, const Header& header, size_t header_bytes, long count)
      : Y4mBase(std::move(name), header), fd_(fd), header_bytes_(header_bytes), count_(count) {}
  ~Y4mFile() override { close(fd_); }

  double frame_rate() const override { return count_ == 1 ? 0 : static_cast<double>(header_.rate_num) / header_.rate_den; }
  double length() const override { return count_ > 1 ? count_ * frame_period_ : 0; }

  // Picture k shows from k frame periods on; past the end the last holds.
  void frame_at(double seconds, Image& out) override {
    while (current_ + 1 < count_ && next_shows(current_, seconds)) ++current_;
    if (same_size(out)) return read_at(current_, out);
    if (!scratch_) scratch_ = std::make_unique<Image>(header_.width, header_.height);
    read_at(current_, *scratch_);
    scale(*scratch_, out);
  }

 private:
  // Picture k: its frame line and planes in one read.
  void read_at(long k, Image& target) {
    char line[kFrameLineBytes];
    iovec vectors[4] = {{line, kFrameLineBytes},
                        {target.get_Y(), target.plane_size(0)},
                        {target.get_U(), target.plane_size(1)},
                        {target.get_V(), target.plane_size(2)}};
    const off_t offset = static_cast<off_t>(header_bytes_ + k * (kFrameLineBytes + frame_bytes()));
    if (read_vectors(fd_, vectors, 4, offset, name_) != kFrameLineBytes + frame_bytes() ||
        std::memcmp(line, kFrameLine, kFrameLineBytes) != 0) {
      throw RunError(name_ + ": the Y4M file is damaged at picture " + std::to_string(k + 1));
    }
  }

  int fd_;
  size_t header_bytes_;
  long count_;
  long current_ = 0;  // the picture on screen
  std::unique_ptr<Image> scratch_;
};

// A Y4M stream on standard input, read into a frame kept for the run.
class Y4mStream : public Y4mBase {
 public:
  Y4mStream(std::string name, int fd, const Header& header)
      : Y4mBase(std::move(name), header), fd_(fd), held_(header.width, header.height) {
    if (!read_next(held_)) throw UsageError(name_ + ": holds no picture that can be decoded");
  }

  // A stream's length is not known in advance; it plays at its own rate.
  double frame_rate() const override { return static_cast<double>(header_.rate_num) / header_.rate_den; }
  double length() const override { return 0; }

  void frame_at(double seconds, Image& out) override {
    while (!ended_ && next_shows(current_, seconds)) {
      if (read_next(held_)) {
        ++current_;
      } else {
        ended_ = true;
      }
    }
    if (same_size(out)) return copy_planes(held_, out);
    scale(held_, out);
  }

 private:
  // The next picture of a stream; false at its end. A frame line may carry
  // parameters, which change nothing here.
  bool read_next(Image& target) {
    char line[kFrameLineBytes];
    iovec head = {line, kFrameLineBytes};
    const size_t got = read_vectors(fd_, &head, 1, -1, name_);
    if (got == 0) return false;
    if (got < kFrameLineBytes || std::memcmp(line, "FRAME", 5) != 0 || (line[5] != '\n' && line[5] != ' ')) {
      throw RunError(name_ + ": the Y4M stream is damaged or ends in the middle of a frame");
    }
    for (char c = line[5]; c != '\n';) {
      iovec one = {&c, 1};
      if (read_vectors(fd_, &one, 1, -1, name_) != 1) {
        throw RunError(name_ + ": the Y4M stream ends in the middle of a frame");
      }
    }
    iovec planes[3] = {{target.get_Y(), target.plane_size(0)},
                       {target.get_U(), target.plane_size(1)},
                       {target.get_V(), target.plane_size(2)}};
    if (read_vectors(fd_, planes, 3, -1, name_) != frame_bytes()) {
      throw RunError(name_ + ": the Y4M stream ends in the middle of a frame");
    }
    return true;
  }

  int fd_;
  long current_ = 0;
  bool ended_ = false;
  Image held_;  // the last picture read, shown again when the output asks for it
};

// The closest fraction to `value` with a denominator of at most `largest`
// (continued fractions), for the header's frame rate.
void as_fraction(double value, int largest, int& num, int& den) {
  long p0 = 0, q0 = 1, p1 = 1, q1 = 0;
  double x = value;
  for (int step = 0; step < 32; ++step) {
    const double whole = std::floor(x);
    const long p2 = static_cast<long>(whole) * p1 + p0, q2 = static_cast<long>(whole) * q1 + q0;
    if (q2 > largest || p2 > 1000000000L) break;
    p0 = p1, q0 = q1, p1 = p2, q1 = q2;
    if (x - whole < 1e-9) break;
    x = 1 / (x - whole);
  }
  num = static_cast<int>(p1), den = static_cast<int>(q1 ? q1 : 1);
}

// YUV4MPEG2: a text header, then "FRAME" and the three planes per frame.
class Y4mSink : public FrameSink {
 public:
  Y4mSink(const std::string& path, const OutputInfo& info) {
    if (path == "-") {
      if (isatty(STDOUT_FILENO)) throw UsageError("not writing video to a terminal (redirect stdout or pipe it)");
      file_ = stdout;
    } else {
      temp_ = std::make_unique<AtomicOutput>(path, AtomicOutput::kFile);
      file_ = temp_->stream();
    }
    int num = 25, den = 1;
    as_fraction(info.fps, 100000, num, den);
    std::fprintf(file_, "YUV4MPEG2 W%d H%d F%d:%d Ip A1:1 C420jpeg\n", info.size.width, info.size.height, num, den);
  }
  // Straight from the planes, past the stream's buffer (emptied once, after the header).
  void write(const Image& frame, int) override {
    const bool written = (header_flushed_ || std::fflush(file_) == 0) && write_y4m_frame(fileno(file_), frame);
    header_flushed_ = true;
    if (!written) {
      const std::string reason = std::strerror(errno);
      if (temp_) temp_->fail(reason);
      throw RunError("cannot write the Y4M stream: " + reason);
    }
  }
  void finish() override {
    if (!temp_) {
      if (std::fflush(file_) != 0) throw RunError("cannot write the Y4M stream: " + std::string(std::strerror(errno)));
      return;
    }
    file_ = nullptr;
    temp_->commit();
  }

 private:
  std::unique_ptr<AtomicOutput> temp_;
  FILE* file_ = nullptr;
  bool header_flushed_ = false;
};

}  // namespace

std::unique_ptr<FrameSource> open_y4m(const std::string& name) {
  const bool stream = name == "-";
  int fd = stream ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return nullptr;
  struct stat info;
  if (!stream && (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode))) {
    close(fd);
    return nullptr;
  }
  // The header line: one byte at a time from a pipe, so nothing after it is taken.
  std::string line;
  char c = 0;
  while (line.size() < kMaxHeader) {
    ssize_t got = read(fd, &c, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0 || c == '\n') break;
    line += c;
  }
  Header header;
  const bool y4m = c == '\n' && parse_header(line, header);
  if (!y4m || !fast_form(header)) {
    if (!stream) {
      close(fd);
      return nullptr;
    }
    if (!y4m) throw UsageError("-: standard input is not a Y4M stream");
    throw UsageError("-: standard input must be 8-bit 4:2:0 Y4M of even width and height (this is C" +
                     header.colour + ", " + std::to_string(header.width) + "x" + std::to_string(header.height) + ")");
  }
  if (stream) return std::make_unique<Y4mStream>(name, fd, header);
  const size_t header_bytes = line.size() + 1;
  const size_t frame = kFrameLineBytes + static_cast<size_t>(header.width) * header.height * 3 / 2;
  const size_t file_bytes = static_cast<size_t>(info.st_size);
  const long count = static_cast<long>((file_bytes - header_bytes) / frame);
  char first[kFrameLineBytes] = {};
  // Frame lines with parameters shift every picture: FFmpeg's reader takes those.
  if (count == 0 || pread(fd, first, kFrameLineBytes, static_cast<off_t>(header_bytes)) != static_cast<ssize_t>(kFrameLineBytes) ||
      std::memcmp(first, kFrameLine, kFrameLineBytes) != 0) {
    close(fd);
    return nullptr;
  }
  if ((file_bytes - header_bytes) % frame != 0) {
    close(fd);
    throw RunError(name + ": the Y4M file ends in the middle of picture " + std::to_string(count + 1));
  }
  return std::make_unique<Y4mFile>(name, fd, header, header_bytes, count);
}

std::unique_ptr<FrameSink> open_y4m_sink(const std::string& path, const OutputInfo& info) {
  return std::make_unique<Y4mSink>(path, info);
}

bool write_y4m_frame(int fd, const Image& frame) {
  iovec vectors[4] = {{const_cast<char*>(kFrameLine), kFrameLineBytes},
                      {frame.get_Y(), frame.plane_size(0)},
                      {frame.get_U(), frame.plane_size(1)},
                      {frame.get_V(), frame.plane_size(2)}};
  iovec* left = vectors;
  int count = 4;
  while (count > 0) {
    ssize_t put = writev(fd, left, count);
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return false;
    advance(left, count, static_cast<size_t>(put));
  }
  return true;
}

}  // namespace zvcli
