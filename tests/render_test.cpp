// zvtran render and zvtran demo, run as a user runs them: real media made with the ffmpeg program, outputs decoded back
// and compared, bad input refused without leftovers, and the gallery page opened in headless Chromium.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "frame/registration.h"
#include "frame/zv_transition.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
const std::string kZvtran = ZVTRAN_PATH;

std::string read_text(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

struct Result { int status; std::string out, err; };

// A scratch folder per test, removed afterwards.
class RenderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/zvtran-render-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    dir_ = pattern;
  }
  void TearDown() override { fs::remove_all(dir_); }

  std::string path(const std::string& name) const { return dir_ + "/" + name; }
  std::string q(const std::string& name) const { return "'" + path(name) + "'"; }  // quoted for the shell

  Result sh(const std::string& command) const {
    const std::string out = path(".stdout"), err = path(".stderr");
    int status = std::system((command + " >'" + out + "' 2>'" + err + "' </dev/null").c_str());
    Result result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_text(out), read_text(err)};
    std::remove(out.c_str());
    std::remove(err.c_str());
    return result;
  }
  Result zvtran(const std::string& args) const { return sh("'" + kZvtran + "' " + args); }
  // zvtran with `args`, which must succeed; its standard output.
  std::string zvtran_ok(const std::string& args) const {
    Result r = zvtran(args);
    EXPECT_EQ(r.status, 0) << args << "\n" << r.err;
    return r.out;
  }
  void ffmpeg(const std::string& args) const {
    Result r = sh("ffmpeg -hide_banner -loglevel error -y " + args);
    ASSERT_EQ(r.status, 0) << r.err;
  }
  // A generated clip in 4:2:0.
  void lavfi(const std::string& source, const std::string& name) const {
    ffmpeg("-f lavfi -i " + source + " -pix_fmt yuv420p " + q(name));
  }
  // ffprobe's values of `entries` for each stream of a file, as CSV lines.
  std::string probe(const std::string& entries, const std::string& name) const {
    return sh("ffprobe -v error -show_entries stream=" + entries + " -of csv=p=0 " + q(name)).out;
  }

  // Names in the scratch folder, hidden ones included.
  std::set<std::string> listing() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir_)) names.insert(entry.path().filename().string());
    return names;
  }

  std::string dir_;
};

struct Video { int width = 0, height = 0; std::vector<std::vector<uint8_t>> frames; };  // frames: Y, U, V of each

Video parse_y4m(const std::string& bytes) {
  Video video;
  size_t eol = bytes.find('\n');
  if (bytes.compare(0, 10, "YUV4MPEG2 ") != 0 || eol == std::string::npos) return video;
  std::smatch m;
  std::string header = bytes.substr(0, eol);
  if (std::regex_search(header, m, std::regex(" W(\\d+)"))) video.width = std::stoi(m[1]);
  if (std::regex_search(header, m, std::regex(" H(\\d+)"))) video.height = std::stoi(m[1]);
  const size_t frame = static_cast<size_t>(video.width) * video.height * 3 / 2;
  for (size_t at = eol + 1; at < bytes.size();) {
    size_t line = bytes.find('\n', at);
    if (line == std::string::npos || bytes.compare(at, 5, "FRAME") != 0 || line + 1 + frame > bytes.size()) break;
    video.frames.emplace_back(bytes.begin() + line + 1, bytes.begin() + line + 1 + frame);
    at = line + 1 + frame;
  }
  return video;
}

double mean_difference(const std::vector<uint8_t>& x, const std::vector<uint8_t>& y) {
  if (x.size() != y.size() || x.empty()) return 1e9;
  double sum = 0;
  for (size_t i = 0; i < x.size(); ++i) sum += std::abs(x[i] - y[i]);
  return sum / x.size();
}

TEST_F(RenderTest, TwoMp4sOfDifferentSizesAndRates) {
  lavfi("testsrc2=size=320x240:rate=25 -t 2 -crf 12", "a.mp4");
  lavfi("testsrc=size=240x180:rate=30 -t 2 -crf 12", "b.mp4");
  Result r = zvtran("render " + q("a.mp4") + " " + q("b.mp4") + " --transition Fade --duration 1 -o " + q("out.mp4"));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "");  // no progress bar when stderr is not a terminal

  ffmpeg("-i " + q("out.mp4") + " -f yuv4mpegpipe -pix_fmt yuv420p " + q("out.y4m"));
  Video out = parse_y4m(read_text(path("out.y4m")));
  EXPECT_EQ(out.width, 320);  // A's size and rate
  EXPECT_EQ(out.height, 240);
  ASSERT_EQ(out.frames.size(), 25u);

  // The last frame shows B at 24/25 s: its picture 28 (28/30 s), scaled up.
  ffmpeg("-i " + q("a.mp4") + " -frames:v 1 -f yuv4mpegpipe " + q("a0.y4m"));
  ffmpeg("-i " + q("b.mp4") + " -vf 'select=eq(n\\,28),scale=320:240' -frames:v 1 -f yuv4mpegpipe " + q("b28.y4m"));
  const std::vector<uint8_t> a0 = parse_y4m(read_text(path("a0.y4m"))).frames.at(0);
  const std::vector<uint8_t> b28 = parse_y4m(read_text(path("b28.y4m"))).frames.at(0);
  EXPECT_LT(mean_difference(out.frames.front(), a0), 2.0);
  EXPECT_LT(mean_difference(out.frames.back(), b28), 3.0);
  EXPECT_GT(mean_difference(a0, b28), 20.0);  // the comparison can tell A from B
}

TEST_F(RenderTest, Y4mClipAgainstPngStillIsExact) {
  lavfi("testsrc2=size=160x120:rate=10 -t 1", "a.y4m");
  ffmpeg("-f lavfi -i smptebars=size=200x150 -frames:v 1 " + q("b.png"));
  ffmpeg("-i " + q("b.png") + " -vf scale=160:120 -pix_fmt yuv420p -f yuv4mpegpipe " + q("b.y4m"));
  const Video a = parse_y4m(read_text(path("a.y4m")));
  ASSERT_EQ(a.frames.size(), 10u);

  // 1.5 s at A's 10 fps: 15 frames, A (1 s long) holding its last picture.
  const std::string args =
      "render " + q("a.y4m") + " " + q("b.png") + " --transition 14 --style 'Normal Switch' --duration 1.5 -o ";
  zvtran_ok(args + q("out.y4m"));
  const std::string bytes = read_text(path("out.y4m"));
  Video out = parse_y4m(bytes);
  EXPECT_EQ(out.width, 160);
  EXPECT_EQ(out.height, 120);
  ASSERT_EQ(out.frames.size(), 15u);
  EXPECT_EQ(out.frames.front(), a.frames.front());
  EXPECT_LT(mean_difference(out.frames.back(), parse_y4m(read_text(path("b.y4m"))).frames.at(0)), 1.5);

  // The same stream on stdout.
  EXPECT_EQ(zvtran_ok(args + "-"), bytes);

  // A clip faded into itself shows its own pictures at 10 fps, then holds the last.
  zvtran_ok("render " + q("a.y4m") + " " + q("a.y4m") + " --transition Fade --duration 1.5 -o " + q("self.y4m"));
  Video self = parse_y4m(read_text(path("self.y4m")));
  ASSERT_EQ(self.frames.size(), 15u);
  for (size_t i = 0; i < self.frames.size(); ++i) EXPECT_EQ(self.frames[i], a.frames[std::min<size_t>(i, 9)]) << i;
}

TEST_F(RenderTest, PatternsIntoEveryKindOfOutput) {
  const std::string clips = "render pattern:zoneplate pattern:checker --transition Fade --size 96x64 --fps 20 "
                            "--duration 0.5 ";
  zvtran_ok(clips + "-o " + q("out.y4m"));
  Video out = parse_y4m(read_text(path("out.y4m")));
  EXPECT_EQ(out.width, 96);
  EXPECT_EQ(out.height, 64);
  ASSERT_EQ(out.frames.size(), 10u);
  for (size_t i = 1; i < out.frames.size(); ++i) EXPECT_NE(out.frames[i], out.frames[i - 1]) << i;

  // With the clips around it: 1.5 s of each two-second pattern before and after.
  zvtran_ok(clips + "--with-clips -o " + q("clips.y4m"));
  EXPECT_EQ(parse_y4m(read_text(path("clips.y4m"))).frames.size(), 70u);

  for (const std::string pattern : {"bars", "gradient"}) {
    zvtran_ok("render pattern:" + pattern + " pattern:checker --transition 14 --size 96x64 -o " + q(pattern + ".mp4"));
  }
  EXPECT_EQ(sh("ffprobe -v error -count_frames -show_entries stream=codec_name,width,height,nb_read_frames -of "
               "csv=p=0 " + q("bars.mp4")).out,
            "h264,96,64,25\n");

  zvtran_ok(clips + "--style 'fade out&in' -o " + q("sheet.png"));
  EXPECT_EQ(probe("width,height", "sheet.png"), "536,156\n");  // five 96 x 64 frames under two lines of text

  zvtran_ok(clips + "-o " + q("frames"));
  std::string names;
  for (int i = 1; i <= 11; ++i) {
    char name[32];
    std::snprintf(name, sizeof name, "frames/frame-%05d.png", i);
    names += fs::exists(path(name)) ? "+" : "-";
  }
  EXPECT_EQ(names, "++++++++++-");
  EXPECT_EQ(probe("width,height", "frames/frame-00010.png"), "96,64\n");

  // /dev/null, by name or through a link: every frame rendered and dropped, nothing left beside it in /dev.
  fs::create_symlink("/dev/null", path("sink"));
  for (const std::string& sink : {std::string("/dev/null"), path("sink")}) {
    EXPECT_EQ(zvtran_ok(clips + "-o '" + sink + "'"),
              sink + ": 10 frames, 96x64 at 20 fps (Fade, style 0: Normal Switch)\n");
  }
  EXPECT_TRUE(fs::is_symlink(path("sink")));
  for (const auto& entry : fs::directory_iterator("/dev")) {
    EXPECT_NE(entry.path().filename().string().rfind(".null", 0), 0u) << entry.path();
  }
  EXPECT_EQ(listing(), (std::set<std::string>{"out.y4m", "clips.y4m", "bars.mp4", "gradient.mp4", "sheet.png",
                                               "frames", "sink"}));
}

TEST_F(RenderTest, BadInputGetsOneLineAndLeavesNothing) {
  lavfi("testsrc=size=64x48:rate=10 -t 0.5", "clip.y4m");
  std::ofstream(path("notes.mp4")) << "these are notes, not a video\n";
  std::ofstream(path("file")) << "x";
  const std::string clip = q("clip.y4m") + " ", two = clip + clip + "--transition Fade ";
  struct Case { std::string args, message; };
  const Case cases[] = {
      {q("missing.mp4") + " " + clip + "--transition Fade -o OUT.mp4", "missing.mp4: no such file"},
      {q("notes.mp4") + " " + clip + "--transition Fade -o OUT.mp4", "not a media file"},
      {"pattern:plaid " + clip + "--transition Fade -o OUT.mp4", "unknown pattern 'plaid'"},
      {clip + clip + "--transition Frobnicate -o OUT.mp4", "unknown transition 'Frobnicate'"},
      {clip + clip + "--transition 67 -o OUT.mp4", "out of range"},
      {two + "--style Sideways -o OUT.mp4", "unknown style 'Sideways' for Fade"},
      {two + "--style 8 -o OUT.mp4", "style 8 is out of range for Fade (styles 0-7)"},
      {two + "--style -1 -o OUT.y4m", "out of range"},
      {two + "--size 321x180 -o OUT.mp4", "not a size of even width and height"},
      {two + "--size 0x0 -o OUT.y4m", "not a size of even width and height"},
      {two + "--size big -o OUT.mp4", "not a size of the form WxH"},
      {two + "--duration 0 -o OUT.mp4", "--duration"},
      {two + "--fps nan -o OUT.mp4", "--fps"},
      {two + "-o OUT.avi", "unknown output kind '.avi'"},
      {two + "-o " + q("file/out.mp4"), "cannot write"},
      {two + "-o " + q("file/out.y4m"), "cannot write"},
      {two + "-o " + q("file/out.png"), "cannot write"},
      {two + "-o " + q("no/such/folder/"), "cannot write"},
      {two, "missing option --output"},
      {"- " + clip + "--transition Fade -o OUT.y4m", "-: standard input is not a Y4M stream"},
      {"- - --transition Fade -o OUT.y4m", "only one of A and B can be -"},
      {two + "--threads 0 -o OUT.y4m", "--threads must be 1 to 256"},
      {two + "-o " + q("file"), "is not a folder"},
      {two + "-o /dev/full", "is not a folder"},
  };
  const std::set<std::string> before = listing();
  for (const Case& c : cases) {
    std::string args = c.args;
    if (size_t at = args.find("OUT."); at != std::string::npos) args.replace(at, 3, q("out"));
    Result r = zvtran("render " + args);
    EXPECT_NE(r.status, 0) << args;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << args << "\n" << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
    EXPECT_EQ(listing(), before) << args;
  }
}

// The direct Y4M reader against FFmpeg's (the same pictures in a raw NUT file), from a file and from standard input, at
// the clip's size and scaled, at its rate and at a higher one (pictures shown twice).
TEST_F(RenderTest, Y4mFastPathAndStdinMatchFfmpeg) {
  lavfi("testsrc2=size=96x64:rate=10 -t 1", "a.y4m");
  lavfi("smptebars=size=96x64:rate=10 -t 1", "b.y4m");
  ffmpeg("-i " + q("a.y4m") + " -c:v rawvideo " + q("a.nut"));
  const std::string b = " " + q("b.y4m") + " --transition 38 --duration 1.2 ";
  for (const std::string options : {"", "--size 64x48", "--fps 25"}) {
    Result fast = zvtran("render " + q("a.y4m") + b + options + " -o -");
    Result reference = zvtran("render " + q("a.nut") + b + options + " -o -");
    Result piped = sh("{ cat " + q("a.y4m") + " | '" + kZvtran + "' render -" + b + options + " -o -; }");
    Result redirected = sh("{ '" + kZvtran + "' render -" + b + options + " -o - <" + q("a.y4m") + "; }");
    ASSERT_EQ(fast.status, 0) << fast.err;
    ASSERT_EQ(reference.status, 0) << reference.err;
    EXPECT_GE(parse_y4m(fast.out).frames.size(), 12u) << options;
    EXPECT_EQ(fast.out, reference.out) << options;
    EXPECT_EQ(piped.out, reference.out) << options << piped.err;
    EXPECT_EQ(redirected.out, reference.out) << options << redirected.err;
  }
}

TEST_F(RenderTest, TruncatedStdinStopsWithOneLine) {
  lavfi("testsrc2=size=96x64:rate=10 -t 1", "a.y4m");
  const size_t cut = read_text(path("a.y4m")).find("FRAME") + 6 + 96 * 64 * 3 / 2 + 5000;  // 1.5 pictures
  Result r = sh("{ head -c " + std::to_string(cut) + " " + q("a.y4m") + " | '" + kZvtran +
                "' render - pattern:bars --transition Fade --duration 1 -o " + q("out.y4m") + "; }");
  EXPECT_NE(r.status, 0);
  EXPECT_EQ(r.err, "zvtran render: -: the Y4M stream ends in the middle of a frame\n");
  EXPECT_EQ(listing(), std::set<std::string>{"a.y4m"});
}

// GLSL transitions and easing through render: each frame is the call `zvtran apply` makes at the eased time (ease-in
// half way: 0.125), a cubic-bezier on the diagonal renders linear's bytes, and a transition that cannot be drawn here
// stops the render with one line and no output.
TEST_F(RenderTest, GlslTransitionsAndEasingDrawWhatApplyDraws) {
  lavfi("testsrc2=size=64x48:rate=25 -t 1", "a.y4m");
  lavfi("mandelbrot=size=64x48:rate=25 -t 1", "b.y4m");
  const Video a = parse_y4m(read_text(path("a.y4m"))), b = parse_y4m(read_text(path("b.y4m")));
  ASSERT_EQ(a.frames.size(), 25u);
  // 0.44 s at 25 fps: 11 frames, the middle one half way.
  const std::string clips = "render " + q("a.y4m") + " " + q("b.y4m") + " --duration 0.44 -o - --transition ";
  auto apply = [&](const std::string& op, size_t i, double position, const std::string& options) {
    for (const auto& [name, frame] : {std::make_pair("fa.yuv", &a.frames[i]), std::make_pair("fb.yuv", &b.frames[i])}) {
      std::ofstream(path(name), std::ios::binary).write(reinterpret_cast<const char*>(frame->data()), frame->size());
    }
    char at[32];
    std::snprintf(at, sizeof at, "%.17g", position);
    zvtran_ok("apply " + op + " --a " + q("fa.yuv") + " --a-size 64x48 --b " + q("fb.yuv") + " --out " + q("fo.yuv") +
              " --position " + at + " " + options);
    const std::string bytes = read_text(path("fo.yuv"));
    return std::vector<uint8_t>(bytes.begin(), bytes.end());
  };
  struct Case { std::string transition, options; };
  for (const Case& c : {Case{"gl:ripple", "--set amplitude=40"}, Case{"14", "--style 0"}}) {
    SCOPED_TRACE(c.transition);
    const Video linear = parse_y4m(zvtran_ok(clips + c.transition + " " + c.options));
    ASSERT_EQ(linear.frames.size(), 11u);
    for (size_t i : {0, 3, 10}) EXPECT_EQ(linear.frames[i], apply(c.transition, i, i / 10.0, c.options)) << i;
    const Video eased = parse_y4m(zvtran_ok(clips + c.transition + " " + c.options + " --easing ease-in"));
    EXPECT_EQ(eased.frames.at(5), apply(c.transition, 5, 0.125, c.options));
    EXPECT_NE(eased.frames.at(5), linear.frames.at(5));
    EXPECT_EQ(zvtran_ok(clips + c.transition + " " + c.options + " --easing 'cubic-bezier(0.3, 0.3, 0.9, 0.9)'"),
              zvtran_ok(clips + c.transition + " " + c.options));
  }
  // No OpenGL driver the vendor-neutral library can find: one line naming the transition, exit status 1.
  Result r = sh("__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent '" + kZvtran + "' render " + q("a.y4m") + " " +
                q("b.y4m") + " --transition gl:fade -o " + q("out.mp4"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err.rfind("zvtran render: fade: no OpenGL context can be made", 0), 0u) << r.err;
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_EQ(listing(), (std::set<std::string>{"a.y4m", "b.y4m", "fa.yuv", "fb.yuv", "fo.yuv"}));
}

// Every implemented transition, randomised ones included, on one worker and on four.
TEST_F(RenderTest, ThreadCountDoesNotChangeOutput) {
  lavfi("testsrc2=size=64x48:rate=10 -t 1", "a.y4m");
  lavfi("mandelbrot=size=64x48:rate=10 -t 1", "b.y4m");
  const std::string clips = "render " + q("a.y4m") + " " + q("b.y4m") + " --duration 0.6 -o - --transition ";
  for (int id = 1; id <= zv::kTransitionCount; ++id) {
    if (!zv::transition_is_implemented(id)) continue;
    Result one = zvtran(clips + std::to_string(id) + " --threads 1");
    Result four = zvtran(clips + std::to_string(id) + " --threads 4");
    ASSERT_EQ(one.status, 0) << id << one.err;
    EXPECT_EQ(parse_y4m(one.out).frames.size(), 6u) << id;
    EXPECT_TRUE(one.out == four.out) << "transition " << id;
  }
}

// Mean square of 16-bit mono samples from `from` to `to` seconds at 8 kHz.
double power(const std::string& pcm, double from, double to) {
  const size_t first = static_cast<size_t>(from * 8000), last = std::min(pcm.size() / 2, size_t(to * 8000));
  double sum = 0;
  for (size_t i = first; i < last; ++i) {
    const int16_t v = static_cast<int16_t>(static_cast<uint8_t>(pcm[2 * i]) | static_cast<uint8_t>(pcm[2 * i + 1]) << 8);
    sum += static_cast<double>(v) * v;
  }
  return last > first ? sum / (last - first) : -1;
}

TEST_F(RenderTest, Mp4CarriesAudioAcross) {
  ffmpeg("-f lavfi -i testsrc2=size=96x64:rate=25 -f lavfi -i sine=f=440:r=44100 -t 3 -pix_fmt yuv420p -c:a aac "
         "-shortest " + q("a.mp4"));
  // A's tone for 2 s, fading out over the 1 s transition, then B's silence for 1 s.
  zvtran_ok("render " + q("a.mp4") + " pattern:bars --transition Fade --with-clips -o " + q("out.mp4"));
  EXPECT_EQ(probe("codec_type,duration", "out.mp4"), "video,4.000000\naudio,4.000000\n");
  ffmpeg("-i " + q("out.mp4") + " -vn -ac 1 -ar 8000 -f s16le " + q("out.pcm"));
  const std::string pcm = read_text(path("out.pcm"));
  const double tone = power(pcm, 0.2, 1.9);
  EXPECT_GT(tone, 1e6);
  EXPECT_NEAR(power(pcm, 2.45, 2.55) / tone, 0.25, 0.05);  // half the amplitude mid-way
  EXPECT_LT(power(pcm, 3.1, 3.9), 10.0);

  zvtran_ok("render " + q("a.mp4") + " pattern:bars --transition Fade --no-audio -o " + q("mute.mp4"));
  EXPECT_EQ(probe("codec_type", "mute.mp4"), "video\n");
}

TEST_F(RenderTest, InterruptLeavesNoOutput) {
  for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    std::vector<std::string> words = {kZvtran,      "render", "pattern:bars", "pattern:zoneplate", "--transition", "Fade",
                                      "--duration", "600",    "--size",       "640x360",           "-o",           path("long.y4m")};
    std::vector<char*> argv;
    for (std::string& w : words) argv.push_back(w.data());
    argv.push_back(nullptr);
    pid_t pid;
    ASSERT_EQ(posix_spawn(&pid, kZvtran.c_str(), nullptr, nullptr, argv.data(), environ), 0);
    // Wait until it is writing (its temporary file has appeared and grown);
    // up to a minute, for the slow sanitizer builds.
    bool writing = false;
    for (int i = 0; i < 1200 && !writing; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      for (const std::string& name : listing()) {
        std::error_code error;  // its size, not its bytes: a fast render writes gigabytes in seconds
        const auto size = fs::file_size(path(name), error);
        writing = writing || (name.find(".long.y4m.part") == 0 && !error && size > 1000000);
      }
    }
    EXPECT_TRUE(writing) << "signal " << signal;
    kill(pid, signal);
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status)) << "signal " << signal;
    EXPECT_EQ(WEXITSTATUS(status), 128 + signal);
    EXPECT_EQ(listing(), std::set<std::string>{}) << "signal " << signal;
  }
}

// A full disk, as a file size limit: the error names the output asked for and
// nothing is left behind; a gallery that was there stays as it was.
TEST_F(RenderTest, FailedWritesNameTheOutputAndLeaveWhatWasThere) {
  const std::string limited = "bash -c \"trap '' XFSZ; ulimit -f 1; exec '" + kZvtran + "' \"\\$@\"\" zvtran ";
  const std::string render = "render pattern:zoneplate pattern:checker --transition Fade --size 128x96 --duration 0.4 -o ";
  for (const char* name : {"out.y4m", "out.png", "out.mp4", "frames"}) {
    Result r = sh(limited + render + q(name));
    EXPECT_EQ(r.status, 1) << name;
    EXPECT_NE(r.err.find(path(name) + ": cannot write: "), std::string::npos) << name << ": " << r.err;
    EXPECT_EQ(r.err.find(".part"), std::string::npos) << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
    EXPECT_EQ(listing(), std::set<std::string>{}) << name;
  }

  const std::string gallery = path("gallery");
  Result r = sh(limited + "demo --ids Blend --size 32x32 -o " + q("gallery"));
  EXPECT_EQ(r.status, 1) << r.err;
  EXPECT_EQ(listing(), std::set<std::string>{});  // no gallery before: none after
  zvtran_ok("demo --ids Blend --size 32x32 -o " + q("gallery"));
  const std::string page = read_text(gallery + "/index.html"), media = read_text(gallery + "/media/66-0.png");
  ASSERT_FALSE(media.empty());
  r = sh(limited + "demo --ids Fade --size 32x32 -o " + q("gallery"));
  EXPECT_EQ(r.status, 1) << r.err;
  EXPECT_EQ(r.err.find(".part"), std::string::npos) << r.err;
  EXPECT_EQ(read_text(gallery + "/index.html"), page);
  EXPECT_EQ(read_text(gallery + "/media/66-0.png"), media);
  Result names = sh("ls -A " + q("gallery") + " " + q("gallery/media"));
  EXPECT_EQ(names.out, gallery + ":\nindex.html\nmedia\n\n" + gallery + "/media:\n66-0.mp4\n66-0.png\n");
}

TEST_F(RenderTest, DemoGalleryPlaysInChromium) {
  const std::string page_url = "file://" + path("gallery") + "/index.html";
  Result r = zvtran("demo -o " + q("gallery") + " --ids Fade,gl:InvertedPageCurl,gl:luma --size 96x64");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find(page_url), std::string::npos) << r.out;
  const std::string page = read_text(path("gallery/index.html"));
  // Fade's styles, then the two GLSL transitions, each with its author and licence.
  const int styles = zvTranGetStyleCount(14) + 2;
  for (const char* text : {"<h1>The GLSL collection</h1>", "id=\"gl-luma\"", "media/gl-luma-0.mp4",
                           "by Hewlett-Packard &middot; licence: BSD 3 Clause"}) {
    EXPECT_NE(page.find(text), std::string::npos) << text;
  }
  size_t videos = 0;
  for (size_t at = 0; (at = page.find("<video ", at)) != std::string::npos; ++at) ++videos;
  EXPECT_EQ(videos, static_cast<size_t>(styles));

  const std::string chromium =
      "chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run --disable-background-networking "
      "--disable-component-update --disable-sync --autoplay-policy=no-user-gesture-required "
      "--virtual-time-budget=5000 ";
  r = sh(chromium + "--user-data-dir=" + q("profile1") + " --dump-dom '" + page_url + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  std::smatch m;
  ASSERT_TRUE(std::regex_search(r.out, m, std::regex("id=\"media-status\"([^>]*)>")));
  const std::string n = std::to_string(styles), status = m[1];
  for (const std::string& attribute : {"data-videos=\"" + n, "data-playing=\"" + n, "data-loaded=\"" + n,
                                      std::string("data-broken=\"0")}) {
    EXPECT_NE(status.find(attribute + "\""), std::string::npos) << status;
  }
  EXPECT_EQ(std::regex_search(r.out, std::regex("data-ready=\"[01]\"")), false);

  // A screenshot of the page, kept beside the tests for a person to look at.
  const std::string shot = "demo-gallery.png";
  std::remove(shot.c_str());
  r = sh(chromium + "--user-data-dir=" + q("profile2") + " --window-size=1280,900 --hide-scrollbars --screenshot='" +
         shot + "' '" + page_url + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string png = read_text(shot);
  EXPECT_GT(png.size(), 10000u);
  EXPECT_EQ(png.compare(0, 4, "\x89PNG"), 0);
}

}  // namespace
