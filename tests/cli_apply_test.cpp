// zvtran apply, run as a host developer runs it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct RunResult {
  int status;
  std::string out, err;
};

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

  RunResult run(const std::string& args) {
    const std::string cmd = std::string(ZVTRAN_PATH) + " " + args + " >" + (dir_ / "stdout").string() + " 2>" +
                            (dir_ / "stderr").string();
    const int raw = std::system(("cd " + dir_.string() + " && " + cmd).c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, slurp(dir_ / "stdout"), slurp(dir_ / "stderr")};
  }

  fs::path dir_;
};

TEST_F(ZvtranApply, ReproducesAFadeCall) {
  RunResult r = run("apply Fade --a a.yuv --a-size 8x6 --b b.yuv --b-size 8x6 --out out.yuv --out-size 8x6 "
                    "--style 0 --position 0.5 --a-flags 9");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "result 0 flags 9 param1 0\n");
  const std::string out = slurp(dir_ / "out.yuv");
  ASSERT_EQ(out.size(), 48u + 24u);
  EXPECT_EQ(static_cast<uint8_t>(out[0]), (16 * 192 + 235 * 64) >> 8);  // three quarters a
  EXPECT_EQ(static_cast<uint8_t>(out[48]), (100 * 192 + 60 * 64) >> 8);
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
    EXPECT_EQ(r.status, 2) << args;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << args << ": " << r.err;
    EXPECT_TRUE(r.out.empty()) << args;
  }
  EXPECT_FALSE(fs::exists(dir_ / "out.yuv"));
}

TEST_F(ZvtranApply, AnUnwritableOutputFailsWithoutLeavingAFile) {
  RunResult r = run("apply 14 --a-size 8x6 --out no-such-dir/out.yuv");
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("cannot write"), std::string::npos) << r.err;
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
