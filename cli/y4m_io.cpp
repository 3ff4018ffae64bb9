#include "cli/y4m_io.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include "cli/av_support.h"

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

class Y4mSource : public FrameSource {
 public:
  Y4mSource(std::string name, int fd, bool own_fd, const Header& header, size_t header_bytes, long count)
      : name_(std::move(name)), fd_(fd), own_fd_(own_fd), header_(header), header_bytes_(header_bytes),
        count_(count), frame_period_(static_cast<double>(header.rate_den) / header.rate_num),
        held_(header.width, header.height) {
    if (!seekable() && !read_next(held_)) throw UsageError(name_ + ": holds no picture that can be decoded");
    current_ = 0;
  }
  ~Y4mSource() override {
    if (own_fd_) close(fd_);
  }

  Size size() const override { return {header_.width, header_.height}; }
  // A stream's length is not known in advance; it plays at its own rate.
  double frame_rate() const override { return count_ == 1 ? 0 : static_cast<double>(header_.rate_num) / header_.rate_den; }
  double length() const override { return count_ > 1 ? count_ * frame_period_ : 0; }

  // Picture k shows from k frame periods on; past the end the last holds.
  void frame_at(double seconds, Image& out) override {
    const bool direct = out.width == header_.width && out.height == header_.height;
    const Image* picture = &held_;
    if (seekable()) {
      while (current_ + 1 < count_ && (current_ + 1) * frame_period_ <= seconds + 1e-6) ++current_;
      Image& target = direct ? out : scratch();
      read_at(current_, target);
      if (direct) return;
      picture = &target;
    } else {
      while (!ended_ && (current_ + 1) * frame_period_ <= seconds + 1e-6) {
        if (read_next(held_)) {
          ++current_;
        } else {
          ended_ = true;
        }
      }
      if (direct) return copy_planes(held_, out);
    }
    FramePtr frame = alloc_frame();
    image_as_frame(*picture, *frame);
    converter_.to_image(*frame, out);
  }

 private:
  bool seekable() const { return count_ >= 0; }
  size_t frame_bytes() const { return static_cast<size_t>(header_.width) * header_.height * 3 / 2; }

  Image& scratch() {
    if (!scratch_) scratch_ = std::make_unique<Image>(header_.width, header_.height);
    return *scratch_;
  }

  // Picture k of a file: its frame line and planes in one read.
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

  std::string name_;
  int fd_;
  bool own_fd_;
  Header header_;
  size_t header_bytes_;
  long count_;  // pictures in a file; -1 for a stream
  double frame_period_;
  long current_ = 0;  // the picture on screen
  bool ended_ = false;
  Image held_;  // a stream's last picture, shown again when the output asks for it
  std::unique_ptr<Image> scratch_;
  PictureConverter converter_;
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
  const size_t header_bytes = line.size() + 1;
  long count = -1;
  if (!stream) {
    const size_t frame = kFrameLineBytes + static_cast<size_t>(header.width) * header.height * 3 / 2;
    char first[kFrameLineBytes] = {};
    // Frame lines with parameters shift every picture: FFmpeg's reader takes those.
    if (pread(fd, first, kFrameLineBytes, static_cast<off_t>(header_bytes)) != static_cast<ssize_t>(kFrameLineBytes) ||
        std::memcmp(first, kFrameLine, kFrameLineBytes) != 0) {
      close(fd);
      return nullptr;
    }
    count = static_cast<long>((static_cast<size_t>(info.st_size) - header_bytes) / frame);
    if (count == 0) {
      close(fd);
      return nullptr;
    }
  }
  return std::make_unique<Y4mSource>(name, fd, !stream, header, header_bytes, count);
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
