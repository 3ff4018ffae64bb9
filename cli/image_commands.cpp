// zvtran rgb2yuv, yuv2rgb and resize: single calls of the picture services on
// raw files, for reproducing what a host's call did.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "cli/atomic_output.h"
#include "cli/cli_common.h"
#include "cli/commands.h"
#include "imaging/image_resize.h"
#include "imaging/yuv_rgb.h"

namespace zvcli {
namespace {

int checked_side(int value, const std::string& what, bool allow_negative) {
  const int lowest = allow_negative ? -kMaxFrameSide : 0;
  if (value < lowest || value > kMaxFrameSide) {
    throw UsageError(what + " must be " + std::to_string(lowest) + " to " + std::to_string(kMaxFrameSide) + ", not " +
                     std::to_string(value));
  }
  return value;
}

Size checked_size(Size size, const std::string& what) { return checked_frame_size(size, what, false); }

// The file's bytes, which must be exactly `expected` of them.
std::vector<uint8_t> read_exact(const std::string& path, size_t expected, const std::string& what) {
  std::vector<uint8_t> bytes = read_file(path);
  if (bytes.size() != expected) {
    throw UsageError(path + ": " + std::to_string(bytes.size()) + " bytes, but " + what + " has " +
                     std::to_string(expected));
  }
  return bytes;
}

size_t frame_file_bytes(const Image& image) { return image.plane_size(0) + image.plane_size(1) + image.plane_size(2); }

// A frame of `size` in `chroma_format`, from `file` when given, else zeroed.
std::unique_ptr<Image> load_frame(Size size, int chroma_format, const std::optional<std::string>& file) {
  auto image = std::make_unique<Image>(size.width, size.height, chroma_format);
  if (file) {
    const std::string what = "a " + std::to_string(size.width) + "x" + std::to_string(size.height) + " frame";
    load_raw_frame(*image, read_exact(*file, frame_file_bytes(*image), what));
  }
  return image;
}

BITMAPINFOHEADER bitmap_header(const Args& args) {
  return zv::rgb24_header(
      checked_side(parse_int(args.require("bmp-width"), "--bmp-width"), "--bmp-width", false),
      checked_side(parse_int(args.require("bmp-height"), "--bmp-height"), "--bmp-height", true));
}

size_t bitmap_bytes(const BITMAPINFOHEADER& header) {
  const long rows = header.biHeight < 0 ? -static_cast<long>(header.biHeight) : header.biHeight;
  return static_cast<size_t>(zv::dib_row_bytes(header.biWidth)) * static_cast<size_t>(rows);
}

// The conversions touch the bitmap's even part in the frame's planes; it must
// fit, whichever way up the bitmap is stored (a top-down one is converted by
// nobody, but is no more acceptable for that).
void require_even_part_fits(const BITMAPINFOHEADER& header, Size frame, const std::string& what) {
  const int w = header.biWidth & ~1, h = std::abs(header.biHeight) & ~1;
  if (w >= 2 && h >= 2 && (w > frame.width || h > frame.height)) {
    throw UsageError("the bitmap's " + std::to_string(w) + "x" + std::to_string(h) + " does not fit " + what);
  }
}

int parse_chroma(const std::optional<std::string>& text, const std::string& what) {
  if (!text || *text == "420") return kChroma420;
  if (*text == "422") return kChroma422;
  throw UsageError(what + " takes 420 or 422, not '" + *text + "'");
}

struct Aspect {
  int x, y;
};

Aspect parse_aspect(const std::string& text, const std::string& what) {
  const size_t colon = text.find(':');
  if (colon == std::string::npos) throw UsageError(what + ": '" + text + "' is not an aspect of the form X:Y");
  return {parse_int(text.substr(0, colon), what), parse_int(text.substr(colon + 1), what)};
}

}  // namespace

int rgb2yuv_command(int argc, char** argv) {
  constexpr const char* kUsage =
      "usage: zvtran rgb2yuv --bmp FILE --bmp-width W --bmp-height H --out FILE --out-size WxH [--out-init FILE]";
  Args args("rgb2yuv", kUsage, argc, argv, {"bmp", "bmp-width", "bmp-height", "out", "out-size", "out-init"});
  if (!args.positional().empty()) throw UsageError(kUsage);
  const BITMAPINFOHEADER header = bitmap_header(args);
  const std::vector<uint8_t> pixels = read_exact(args.require("bmp"), bitmap_bytes(header), "the bitmap");
  const Size size = checked_size(parse_size(args.require("out-size"), "--out-size"), "--out-size");
  const std::string out_path = args.require("out");
  require_even_part_fits(header, size, "the output frame");
  auto out = load_frame(size, kChroma420, args.get("out-init"));
  Rgb24_2_yuv420(out->get_Y(), out->get_U(), out->get_V(), size.width, size.width / 2, size.width / 2, &header,
                 pixels.data());
  write_file_atomically(out_path, raw_frame(*out));
  return 0;
}

int yuv2rgb_command(int argc, char** argv) {
  constexpr const char* kUsage =
      "usage: zvtran yuv2rgb --in FILE --in-size WxH --bmp-width W --bmp-height H --out FILE [--out-init FILE]";
  Args args("yuv2rgb", kUsage, argc, argv, {"in", "in-size", "bmp-width", "bmp-height", "out", "out-init"});
  if (!args.positional().empty()) throw UsageError(kUsage);
  const Size size = checked_size(parse_size(args.require("in-size"), "--in-size"), "--in-size");
  auto in = load_frame(size, kChroma420, args.require("in"));
  const BITMAPINFOHEADER header = bitmap_header(args);
  const std::string out_path = args.require("out");
  require_even_part_fits(header, size, "the input frame");
  std::vector<uint8_t> pixels(bitmap_bytes(header));
  if (auto init = args.get("out-init")) pixels = read_exact(*init, pixels.size(), "the bitmap");
  Yuv420_2_rgb24(&header, pixels.data(), in->get_Y(), in->get_U(), in->get_V(), size.width, size.width / 2,
                 size.width / 2);
  write_file_atomically(out_path, pixels);
  return 0;
}

int resize_command(int argc, char** argv) {
  constexpr const char* kUsage =
      "usage: zvtran resize --src FILE --src-size WxH [--src-picture WxH] [--src-chroma 420|422] --out FILE "
      "--out-size WxH [--out-picture WxH] [--out-chroma 420|422] [--out-init FILE] --interpolation N --method N "
      "[--dst-aspect X:Y --src-aspect X:Y]";
  Args args("resize", kUsage, argc, argv,
            {"src", "src-size", "src-picture", "src-chroma", "out", "out-size", "out-picture", "out-chroma",
             "out-init", "interpolation", "method", "dst-aspect", "src-aspect"});
  if (!args.positional().empty()) throw UsageError(kUsage);
  const Size src_size = checked_size(parse_size(args.require("src-size"), "--src-size"), "--src-size");
  const Size out_size = checked_size(parse_size(args.require("out-size"), "--out-size"), "--out-size");
  const int interpolation = parse_int(args.require("interpolation"), "--interpolation");
  const int method = parse_int(args.require("method"), "--method");
  if (args.has("dst-aspect") != args.has("src-aspect")) {
    throw UsageError("--dst-aspect and --src-aspect go together");
  }
  const std::string out_path = args.require("out");
  auto src = load_frame(src_size, parse_chroma(args.get("src-chroma"), "--src-chroma"), args.require("src"));
  auto out = load_frame(out_size, parse_chroma(args.get("out-chroma"), "--out-chroma"), args.get("out-init"));
  // The picture proper may be given smaller (or, as a host might, larger) than the frame.
  if (auto picture = args.get_size("src-picture")) src->picture_width = picture->width, src->picture_height = picture->height;
  if (auto picture = args.get_size("out-picture")) out->picture_width = picture->width, out->picture_height = picture->height;

  const auto interp = static_cast<IMAGE_INTERPOLATION>(interpolation);
  const auto how = static_cast<IMAGE_RESIZE_METHOD>(method);
  int result;
  if (auto dst_aspect = args.get("dst-aspect")) {
    const Aspect d = parse_aspect(*dst_aspect, "--dst-aspect");
    const Aspect s = parse_aspect(args.require("src-aspect"), "--src-aspect");
    result = zvImageResize(out.get(), d.x, d.y, src.get(), s.x, s.y, interp, how);
  } else {
    result = zvImageResize(out.get(), src.get(), interp, how);
  }
  std::printf("result %d\n", result);
  flush_stdout();  // the output appears only when everything was said
  write_file_atomically(out_path, raw_frame(*out));
  return 0;
}

}  // namespace zvcli
