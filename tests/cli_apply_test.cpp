// zvtran apply, run as a host developer runs it.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct RunResult { int status; std::string out, err; };

std::string slurp(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

class ZvtranApply : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() / ("zvtran-apply-" + std::to_string(::getpid()) + "-" +
                                        ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
    write_frame("a.yuv", 8, 6, 16, 100);
    write_frame("b.yuv", 8, 6, 235, 60);
  }
  void TearDown() override { fs::remove_all(dir_); }

  void write_frame(const std::string& name, int w, int h, int luma, int chroma) {
    std::string bytes(static_cast<size_t>(w * h), static_cast<char>(luma));
    bytes.append(static_cast<size_t>(2 * (w / 2) * (h / 2)), static_cast<char>(chroma));
    std::ofstream(dir_ / name, std::ios::binary) << bytes;
  }

  // `stdout_to` replaces the redirection of stdout (e.g. ">/dev/full", ">&-").
  RunResult run(const std::string& args, const std::string& stdout_to = "") {
    const std::string out = stdout_to.empty() ? ">" + (dir_ / "stdout").string() : stdout_to;
    std::ofstream(dir_ / "stdout").close();
    const std::string cmd = std::string(ZVTRAN_PATH) + " " + args + " " + out + " 2>" + (dir_ / "stderr").string();
    const int raw = std::system(("cd " + dir_.string() + " && " + cmd).c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, slurp(dir_ / "stdout"), slurp(dir_ / "stderr")};
  }

  // The peak resident memory of one zvtran run, in KiB.
  long peak_kib(const std::vector<std::string>& args) {
    std::vector<std::string> words = {ZVTRAN_PATH};
    words.insert(words.end(), args.begin(), args.end());
    const pid_t pid = fork();
    if (pid == 0) {
      if (chdir(dir_.c_str()) != 0) _exit(126);
      std::vector<char*> argv;
      for (std::string& w : words) argv.push_back(w.data());
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      _exit(127);
    }
    int status = 0;
    rusage usage{};
    EXPECT_EQ(wait4(pid, &status, 0, &usage), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    return usage.ru_maxrss;
  }

  fs::path dir_;
};

// A refusal: the exit status, and one line on stderr that says `what`.
void expect_refused(const RunResult& r, int status, const std::string& what, const std::string& args) {
  EXPECT_EQ(r.status, status) << args;
  EXPECT_NE(r.err.find(what), std::string::npos) << args << ": " << r.err;
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << args << ": " << r.err;
}

TEST_F(ZvtranApply, ReproducesAFadeCall) {
  RunResult r = run("apply Fade --a a.yuv --a-size 8x6 --b b.yuv --b-size 8x6 --out out.yuv --out-size 8x6 "
                    "--style 0 --position 0.5 --a-flags 9");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "result 0 flags 9 param1 0\n");
  const std::string out = slurp(dir_ / "out.yuv");
  ASSERT_EQ(out.size(), 48u + 24u);
  EXPECT_EQ(static_cast<uint8_t>(out[0]), 70);  // three quarters a: (16 * 192 + 235 * 64) >> 8
  EXPECT_EQ(static_cast<uint8_t>(out[48]), 90);  // (100 * 192 + 60 * 64) >> 8
}

TEST_F(ZvtranApply, ReportsResultCodesAndStillWritesTheOutput) {
  write_frame("init.yuv", 8, 6, 1, 2);
  RunResult r = run("apply 14 --a a.yuv --a-size 8x6 --b-size 8x6 --out out.yuv --out-init init.yuv --style 8");
  EXPECT_EQ(r.out, "result 3 flags 0 param1 0\n");
  EXPECT_EQ(slurp(dir_ / "out.yuv"), slurp(dir_ / "init.yuv"));
  EXPECT_EQ(run("apply 14 --a-size 8x6 --null b --out out.yuv").out, "result 1 flags 0 param1 0\n");
  EXPECT_EQ(run("apply 14 --a-size 8x6 --enabled 0 --a-flags 4").out, "result 2 flags 4 param1 0\n");
  r = run("apply 14 --a-size 8x6 --out out.yuv --calls 3");
  EXPECT_EQ(slurp(dir_ / "out.yuv").size(), 3u * 72u);
}

TEST_F(ZvtranApply, BadInputGetsOneLineAndExitStatusTwo) {
  write_frame("short.yuv", 4, 4, 0, 0);
  const char* bad[] = {
      "apply",                                              // no transition
      "apply 67 --a-size 8x6",                              // id out of range
      "apply \"No Such Wipe\" --a-size 8x6",                // unknown name
      "apply 14 --a short.yuv --a-size 8x6",                // file length does not match the size
      "apply 14 --a missing.yuv --a-size 8x6",              // missing file
      "apply 14 --a-size 8by6",                             // bad size
      "apply 14 --a-size 8x6 --position soon",              // bad number
      "apply 14 --a-size 8x6 --bogus 1",                    // unknown option
      "apply 14 --a-size 8x6 --null c",                     // bad --null
      "frobnicate",                                         // unknown command
  };
  for (const char* args : bad) {
    RunResult r = run(args);
    expect_refused(r, 2, "", args);
    EXPECT_TRUE(r.out.empty()) << args;
  }
  EXPECT_FALSE(fs::exists(dir_ / "out.yuv"));
}

TEST_F(ZvtranApply, EmptyFramesSizeLimitsAndNamesInAnyCase) {
  std::ofstream(dir_ / "empty.yuv").close();
  // A zero-byte frame file is a whole 0 x 0 frame (nothing to copy, from no data).
  RunResult r = run("apply 14 --a empty.yuv --a-size 0x0 --out out.yuv");
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "result 0 flags 0 param1 0\n");
  EXPECT_EQ(run("resize --src empty.yuv --src-size 0x0 --out big.yuv --out-size 4x2 --interpolation 0 --method 3").status,
            0);
  // Sizes past the documented limit are refused at once, with one line.
  for (const char* args : {"apply 14 --a-size 99999x99999", "apply 14 --a-size 8x6 --b-size 8193x2",
                           "apply 14 --a-size -8193x2", "apply 14 --a-size 8x6 --out-size 2x9000",
                           "resize --src a.yuv --src-size 8x6 --out o.yuv --out-size 9000x2 --interpolation 0 --method 3"}) {
    expect_refused(run(args), 2, "8192", args);
  }
  // Transition names match without regard to case, as style names do.
  EXPECT_EQ(run("apply fade --a a.yuv --a-size 8x6 --b b.yuv --position 1").out, "result 0 flags 0 param1 0\n");
  EXPECT_EQ(run("apply 'LINE BASED wipe' --a-size 8x6").status, 0);
}

TEST_F(ZvtranApply, TopDownBitmapsMustFitTheFrameToo) {
  std::ofstream(dir_ / "pixels.bgr", std::ios::binary) << std::string(48, '\x40');  // 4 x 4, rows of 12 bytes
  for (const char* args : {"rgb2yuv --bmp pixels.bgr --bmp-width 4 --bmp-height -4 --out f.yuv --out-size 2x2",
                           "yuv2rgb --in a.yuv --in-size 8x6 --bmp-width 4 --bmp-height -8 --out p.bgr"}) {
    expect_refused(run(args), 2, "does not fit", args);
  }
  EXPECT_FALSE(fs::exists(dir_ / "f.yuv"));
  EXPECT_FALSE(fs::exists(dir_ / "p.bgr"));
}

TEST_F(ZvtranApply, CallsStreamToTheFileInsteadOfPilingUp) {
  write_frame("big.yuv", 256, 256, 16, 128);
  // 400 frames of 96 KiB: held in memory they would add about 38 MiB.
  const long few = peak_kib({"apply", "14", "--a", "big.yuv", "--a-size", "256x256", "--out", "o.yuv", "--calls", "5"});
  const long many = peak_kib({"apply", "14", "--a", "big.yuv", "--a-size", "256x256", "--out", "o.yuv", "--calls", "400"});
  EXPECT_LT(many - few, 12 * 1024) << few << " KiB for 5 calls, " << many << " KiB for 400";
  EXPECT_EQ(fs::file_size(dir_ / "o.yuv"), 400u * 256 * 256 * 3 / 2);
}

TEST_F(ZvtranApply, AFailedWriteToStandardOutputIsReported) {
  for (const std::string args : {"catalogue", "catalogue --json", "--help", "--version", "apply --help",
                                  "apply 14 --a-size 8x6",
                                  "apply 14 --a-size 8x6 --out out.yuv"}) {
    for (const char* to : {">/dev/full", ">&-"}) {
      expect_refused(run(args, to), 1, "cannot write to standard output", args + " " + to);
    }
  }
  EXPECT_FALSE(fs::exists(dir_ / "out.yuv"));  // not written when its report could not be
  EXPECT_EQ(run("apply --help").status, 0);
}

TEST_F(ZvtranApply, VersionNamesTheOpenGLInUse) {
  const RunResult r = run("--version");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out.rfind("zvtran ", 0), 0u) << r.out;
  EXPECT_NE(r.out.find("\nOpenGL: "), std::string::npos) << r.out;
}

TEST_F(ZvtranApply, AnUnwritableOutputFailsWithoutLeavingAFile) {
  expect_refused(run("apply 14 --a-size 8x6 --out no-such-dir/out.yuv"), 1, "cannot write", "no-such-dir");
  EXPECT_FALSE(fs::exists(dir_ / "no-such-dir"));
}

TEST_F(ZvtranApply, ReproducesThePictureServices) {
  // A 2 x 2 bitmap, white over black (bottom-up rows padded to 8 bytes).
  std::string bmp(16, '\0');
  for (int i = 8; i < 14; ++i) bmp[i] = static_cast<char>(255);
  std::ofstream(dir_ / "pixels.bgr", std::ios::binary) << bmp;
  RunResult r = run("rgb2yuv --bmp pixels.bgr --bmp-width 2 --bmp-height 2 --out frame.yuv --out-size 2x2");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(slurp(dir_ / "frame.yuv"), std::string("\xEB\xEB\x10\x10\x80\x80", 6));  // Y 235 / 16, U V 128
  r = run("yuv2rgb --in frame.yuv --in-size 2x2 --bmp-width 2 --bmp-height 2 --out back.bgr");
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string back = slurp(dir_ / "back.bgr");
  ASSERT_EQ(back.size(), 16u);
  EXPECT_EQ(static_cast<uint8_t>(back[8]), 254);  // white comes back one level short
  EXPECT_EQ(static_cast<uint8_t>(back[0]), 0);
  // The letterbox fit: result 1, whatever happened.
  EXPECT_EQ(run("apply zvTranRound --out-size 8x6 --a a.yuv --a-size 8x6 --out fit.yuv").out,
            "result 1 flags 0 param1 0\n");
  r = run("resize --src a.yuv --src-size 8x6 --out big.yuv --out-size 16x12 --interpolation 0 --method 3");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(slurp(dir_ / "big.yuv").size(), 16u * 12u * 3 / 2);
  EXPECT_EQ(run("resize --src a.yuv --src-size 8x5 --out big.yuv --out-size 16x12").status, 2);
}

}  // namespace
