// The GLSL collection: every transition compiles, starts on `a` and ends on `b` where its own definition does,
// differs from both midway, takes its defaults and its parameters; and the call's contract (refusals, the common
// region, progress clamps, picture parameters, orientation, renderers per size and thread).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "effects3d/zv_gl_collection.h"
#include "gl/gl_api.h"
#include "gl/gl_cache.h"
#include "gl/gl_program.h"
#include "gl/offscreen_context.h"
#include "host/bt601.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kW = 128, kH = 72;

// A picture of 8 x 8 blocks of colours made from RGB, shaded across the picture; `kind` 0 and 1 are two different
// ones. Each 2 x 2 group of pixels, which shares its chroma, has one colour: the picture survives the trip through RGB
// within a level.
ImagePtr picture(int width, int height, int kind) {
  ImagePtr image = zvtest::solid_frame(width, height, 16, 128, 128);
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      const int x = column & ~1, y = row & ~1;
      const int block = (x / 8) * 7 + (y / 8) * 13 + kind * 5;
      const int r = 30 + (block * 37 + 90 * x / width) % 190, g = 30 + (block * 71 + 90 * y / height) % 190;
      const int b = 30 + (block * 53 + kind * 60) % 190;
      image->get_Y()[row * width + column] = static_cast<uint8_t>(zv::rgb_to_y(r, g, b));
      if (x / 2 < width / 2 && y / 2 < height / 2) {
        image->get_U()[(y / 2) * (width / 2) + x / 2] = static_cast<uint8_t>(zv::rgb_to_u(r, g, b));
        image->get_V()[(y / 2) * (width / 2) + x / 2] = static_cast<uint8_t>(zv::rgb_to_v(r, g, b));
      }
    }
  }
  return image;
}

// The largest difference of any sample of the two frames (of one size).
int max_difference(const Image& x, const Image& y) {
  const std::vector<uint8_t> p = zvtest::frame_bytes(x), q = zvtest::frame_bytes(y);
  int most = 0;
  for (size_t i = 0; i < p.size(); ++i) most = std::max(most, std::abs(p[i] - q[i]));
  return most;
}

// What a round trip through 8-bit RGB may change.
constexpr int kRoundTrip = 2;

int apply(int index, Image& out, const Image& a, const Image& b, double progress,
          const std::vector<ZvGlParamValue>& values = {}) {
  return zvGlTranApply(index, &out, const_cast<Image*>(&a), const_cast<Image*>(&b), progress, values.data(),
                       static_cast<int>(values.size()));
}

ZvGlParamValue numbers(const char* name, std::initializer_list<double> list) {
  ZvGlParamValue v{};
  v.name = name;
  for (double x : list) v.values[v.count++] = x;
  return v;
}

// Transitions whose own definition does not show `a` alone at progress 0, or `b` alone at 1.
struct OwnEnds {
  const char* name;
  bool starts_on_a, ends_on_b;
  const char* why;
};
const OwnEnds kOwnEnds[] = {
    {"AdvancedMosaic", false, false, "it samples the pictures on a 200 x 200 mosaic grid at its ends too"},
    {"BlockDissolve", false, true, "the block at the origin draws 0, which step() shows as b from the start"},
    {"InvertedPageCurl", false, true, "the curl starts inside the picture (its amount starts at -0.16)"},
    {"Radial", false, true, "the soft edge of its sweep already shows b at 0"},
    {"tangentMotionBlur", false, false, "its blur, a Gaussian of the eased time, is never 0"},
    {"undulatingBurnOut", false, true, "its burning ring is drawn at the centre from the start"},
};

const OwnEnds* own_ends(const char* name) {
  for (const OwnEnds& e : kOwnEnds) {
    if (std::strcmp(e.name, name) == 0) return &e;
  }
  return nullptr;
}

// Parameters that change nothing while the others keep their defaults.
const char* const kQuietParameters[] = {
    "rotate_scale_fade backColor",  // shows where the turned picture leaves the frame: never at the default scale
};

// A value for `param` other than its default: a switch flipped, whole numbers 3 more, numbers halved (0 becomes 0.5),
// a vector's later numbers quartered, so that it also turns (some transitions use only its direction).
ZvGlParamValue other_value(const ZvGlParamInfo& param) {
  ZvGlParamValue v{};
  v.name = param.name;
  v.count = param.components;
  for (int k = 0; k < param.components; ++k) {
    const double d = param.defaults[k];
    v.values[k] = param.kind == kZvGlBool ? 1 - d : param.kind == kZvGlInt ? d + 3 : d == 0 ? 0.5 : d / (k ? 4 : 2);
  }
  return v;
}

TEST(GlCollection, EveryTransitionDrawsAsItsDefinitionSays) {
  ASSERT_EQ(zvGlTranCount(), 125);
  const ImagePtr a = picture(kW, kH, 0), b = picture(kW, kH, 1), gradient = picture(40, 30, 1);
  ImagePtr out = zvtest::solid_frame(kW, kH, 0, 0, 0), again = zvtest::solid_frame(kW, kH, 0, 0, 0);
  for (const OwnEnds& e : kOwnEnds) EXPECT_GE(zvGlTranFind(e.name), 0) << e.name;
  for (int i = 0; i < zvGlTranCount(); ++i) {
    const ZvGlTransitionInfo& info = *zvGlTranInfo(i);
    SCOPED_TRACE(info.name);
    EXPECT_NE(std::string(info.author), "");
    EXPECT_TRUE(std::string(info.license) == "MIT" || std::string(info.license).rfind("BSD", 0) == 0) << info.license;
    const OwnEnds* ends = own_ends(info.name);

    ASSERT_EQ(apply(i, *out, *a, *b, 0.0), kZvGlDone) << zvGlTranError();
    if (!ends || ends->starts_on_a) {
      EXPECT_LE(max_difference(*out, *a), kRoundTrip) << "at 0";
    }
    ASSERT_EQ(apply(i, *out, *a, *b, 1.0), kZvGlDone) << zvGlTranError();
    if (!ends || ends->ends_on_b) {
      EXPECT_LE(max_difference(*out, *b), kRoundTrip) << "at 1";
    }
    // Some frame between shows neither picture alone (some transitions are still on one of them half way). Some
    // parameters show only near the ends.
    const double between[] = {0.02, 0.1, 0.25, 0.5, 0.75, 0.9, 0.97};
    std::vector<std::vector<uint8_t>> frames;
    bool shows_neither = false;
    for (double p : between) {
      ASSERT_EQ(apply(i, *out, *a, *b, p), kZvGlDone) << zvGlTranError();
      shows_neither = shows_neither || (max_difference(*out, *a) > kRoundTrip && max_difference(*out, *b) > kRoundTrip);
      frames.push_back(zvtest::frame_bytes(*out));
    }
    EXPECT_TRUE(shows_neither);
    if (info.param_count == 0) continue;

    // Every default given explicitly draws what no values draw; the first parameter given another value (a picture
    // parameter: a caller's picture) changes some frame between.
    std::vector<ZvGlParamValue> defaults;
    for (int k = 0; k < info.param_count; ++k) {
      const ZvGlParamInfo& p = info.params[k];
      ZvGlParamValue v{};
      v.name = p.name;
      v.count = p.components;
      std::copy(p.defaults, p.defaults + 4, v.values);
      defaults.push_back(v);
    }
    for (size_t k = 0; k < frames.size(); ++k) {
      ASSERT_EQ(apply(i, *again, *a, *b, between[k], defaults), kZvGlDone) << zvGlTranError();
      EXPECT_EQ(zvtest::frame_bytes(*again), frames[k]);
    }
    std::string unchanged;  // and those listed quiet that are not
    for (int k = 0; k < info.param_count; ++k) {
      ZvGlParamValue changed = other_value(info.params[k]);
      if (info.params[k].kind == kZvGlImage) changed.image = gradient.get();
      bool changes = false;
      for (size_t f = 0; f < frames.size() && !changes; ++f) {
        ASSERT_EQ(apply(i, *again, *a, *b, between[f], {changed}), kZvGlDone) << zvGlTranError();
        changes = zvtest::frame_bytes(*again) != frames[f];
      }
      const std::string named = std::string(info.name) + " " + info.params[k].name;
      const bool quiet = std::find(std::begin(kQuietParameters), std::end(kQuietParameters), named) !=
                         std::end(kQuietParameters);
      if (changes == quiet) unchanged += " " + named + (quiet ? " (changes something now)" : "");
    }
    EXPECT_EQ(unchanged, "");
  }
  ZvFreeOpenGLObj();
}

TEST(GlCollection, FindsNamesAndRefusesBadCallsWithOneLineNamingThem) {
  EXPECT_EQ(zvGlTranFind("fade"), zvGlTranFind("FADE"));
  EXPECT_STREQ(zvGlTranInfo(zvGlTranFind("CrossZoom"))->name, "CrossZoom");
  EXPECT_EQ(zvGlTranFind("no-such-transition"), -1);
  EXPECT_EQ(zvGlTranFind(nullptr), -1);
  EXPECT_EQ(zvGlTranInfo(-1), nullptr);
  EXPECT_EQ(zvGlTranInfo(zvGlTranCount()), nullptr);

  const int directional = zvGlTranFind("Directional"), luma = zvGlTranFind("luma"), box = zvGlTranFind("Box");
  const int swap = zvGlTranFind("BowTieWithParameter");
  ImagePtr a = picture(16, 8, 0), b = picture(16, 8, 1), out = zvtest::solid_frame(16, 8, 9, 9, 9);
  ZvGlParamValue nothing_at_all = numbers("direction", {});
  ZvGlParamValue with_picture = numbers("direction", {});
  with_picture.image = a.get();
  ZvGlParamValue picture_with_numbers = numbers("luma", {1});
  ZvGlParamValue tiny_picture = numbers("luma", {});
  ImagePtr one_pixel = zvtest::solid_frame(1, 1, 0, 0, 0);
  tiny_picture.image = one_pixel.get();
  struct Bad {
    int index;
    std::vector<ZvGlParamValue> values;
    const char* said;  // part of the line
  };
  const Bad bad[] = {
      {-1, {}, "index -1"},
      {zvGlTranCount(), {}, "index 125"},
      {directional, {numbers("speed", {1})}, "Directional: no parameter named 'speed' (parameters: direction)"},
      {directional, {numbers("direction", {1})}, "direction (vec2) takes 2 numbers, not 1"},
      {directional, {nothing_at_all}, "not 0"},
      {directional, {with_picture}, "not a picture"},
      {directional, {numbers("direction", {1, NAN})}, "from -1e6 to 1e6, not nan"},
      {directional, {numbers("direction", {1e7, 0})}, "from -1e6 to 1e6, not 1e+07"},
      {box, {numbers("location", {2.5})}, "location (int) takes 1 whole number, not 2.5"},
      {swap, {numbers("reverse", {2})}, "reverse (bool) takes 1 number (0 or 1), not 2"},
      {luma, {picture_with_numbers}, "luma (sampler2D) takes a picture, not numbers"},
      {luma, {tiny_picture}, "at least 2x2 pixels, not 1x1"},
  };
  const std::vector<uint8_t> before = zvtest::frame_bytes(*out);
  for (const Bad& c : bad) {
    EXPECT_EQ(apply(c.index, *out, *a, *b, 0.5, c.values), kZvGlBadArgument) << c.said;
    const std::string line = zvGlTranError();
    EXPECT_NE(line.find(c.said), std::string::npos) << line;
    EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    EXPECT_EQ(zvGlTranCheck(c.index, c.values.data(), static_cast<int>(c.values.size())), kZvGlBadArgument);
    EXPECT_EQ(zvGlTranError(), line);
  }
  EXPECT_EQ(zvGlTranApply(directional, out.get(), a.get(), b.get(), 0.5, nullptr, 1), kZvGlBadArgument);
  EXPECT_EQ(zvGlTranApply(directional, out.get(), a.get(), b.get(), 0.5, nullptr, -1), kZvGlBadArgument);
  EXPECT_EQ(zvtest::frame_bytes(*out), before);

  // Null frames: 1, and not even the flags are taken.
  out->set_frame_flags(5);
  a->set_frame_flags(7);
  EXPECT_EQ(zvGlTranApply(directional, nullptr, a.get(), b.get(), 0.5, nullptr, 0), kZvGlNullArgument);
  EXPECT_EQ(zvGlTranApply(directional, out.get(), nullptr, b.get(), 0.5, nullptr, 0), kZvGlNullArgument);
  EXPECT_EQ(zvGlTranApply(directional, out.get(), a.get(), nullptr, 0.5, nullptr, 0), kZvGlNullArgument);
  EXPECT_EQ(out->frame_flags(), 5);
  EXPECT_EQ(zvtest::frame_bytes(*out), before);

  const ZvGlParamValue good = numbers("direction", {1, -1});
  EXPECT_EQ(zvGlTranCheck(directional, &good, 1), kZvGlDone);
  EXPECT_STREQ(zvGlTranError(), "");
  EXPECT_EQ(apply(directional, *out, *a, *b, 0.5, {good}), kZvGlDone);
  EXPECT_EQ(out->frame_flags(), 7);
  ZvFreeOpenGLObj();
}

// The collection's coordinates: (0, 0) is the picture's lower-left corner, as the transitions were written for.
TEST(GlCollection, DrawsTheCollectionsWayUpAndReadsCallersPictures) {
  const ImagePtr a = picture(64, 36, 0), b = picture(64, 36, 1);
  ImagePtr out = zvtest::solid_frame(64, 36, 0, 0, 0);
  auto shows = [&](const Image& picture, int x0, int y0, int x1, int y1) {
    for (int y = y0; y < y1; ++y) {
      for (int x = x0; x < x1; ++x) {
        if (std::abs(zvtest::sample(*out, 0, x, y) - zvtest::sample(picture, 0, x, y)) > kRoundTrip) return false;
      }
    }
    return true;
  };
  // wipeUp uncovers b from the bottom, wipeLeft from the right.
  ASSERT_EQ(apply(zvGlTranFind("wipeUp"), *out, *a, *b, 0.5), kZvGlDone);
  EXPECT_TRUE(shows(*b, 0, 20, 64, 36));
  EXPECT_TRUE(shows(*a, 0, 0, 64, 16));
  ASSERT_EQ(apply(zvGlTranFind("wipeLeft"), *out, *a, *b, 0.5), kZvGlDone);
  EXPECT_TRUE(shows(*b, 36, 0, 64, 36));
  EXPECT_TRUE(shows(*a, 0, 0, 28, 36));

  // A luma map darker at the top (of another size): at half way b shows where it is darker than mid-grey.
  ImagePtr map = zvtest::solid_frame(20, 10, 0, 128, 128);
  for (int y = 0; y < 10; ++y) std::memset(map->get_Y() + y * 20, 16 + 219 * y / 9, 20);
  ZvGlParamValue luma = numbers("luma", {});
  luma.image = map.get();
  ASSERT_EQ(apply(zvGlTranFind("luma"), *out, *a, *b, 0.5, {luma}), kZvGlDone);
  EXPECT_TRUE(shows(*b, 0, 0, 64, 14));
  EXPECT_TRUE(shows(*a, 0, 22, 64, 36));
  ZvFreeOpenGLObj();
}

TEST(GlCollection, WorksOnTheCentredCommonRegionOnly) {
  const int fade = zvGlTranFind("fade");
  const ImagePtr a = picture(64, 36, 0), b = picture(64, 36, 1);
  ImagePtr alone = zvtest::solid_frame(64, 36, 0, 0, 0);
  ASSERT_EQ(apply(fade, *alone, *a, *b, 0.3), kZvGlDone);

  // A larger output: only its centred 64 x 36 is written, with what the 64 x 36 call wrote.
  ImagePtr large = zvtest::solid_frame(100, 60, 77, 78, 79);
  ASSERT_EQ(apply(fade, *large, *a, *b, 0.3), kZvGlDone);
  for (int p = 0; p < 3; ++p) {
    const int w = p ? 50 : 100, h = p ? 30 : 60, rw = p ? 32 : 64, rh = p ? 18 : 36, x0 = (w - rw) / 2,
              y0 = (h - rh) / 2;
    EXPECT_TRUE(zvtest::samples_are(*large, p, [&](int x, int y) {
      const bool inside = x >= x0 && x < x0 + rw && y >= y0 && y < y0 + rh;
      return inside ? zvtest::sample(*alone, p, x - x0, y - y0) : 77 + p;
    }));
  }
  // An odd region: its last column and row are left as they were.
  const ImagePtr odd_a = picture(65, 37, 0), odd_b = picture(65, 37, 1);
  ImagePtr odd = zvtest::solid_frame(65, 37, 77, 78, 79);
  ASSERT_EQ(apply(fade, *odd, *odd_a, *odd_b, 0.3), kZvGlDone);
  for (int y = 0; y < 37; ++y) EXPECT_EQ(zvtest::sample(*odd, 0, 64, y), 77) << y;
  for (int x = 0; x < 65; ++x) EXPECT_EQ(zvtest::sample(*odd, 0, x, 36), 77) << x;
  EXPECT_NE(zvtest::sample(*odd, 0, 63, 35), 77);
  // Empty and negative sizes: nothing to draw.
  for (int w : {0, -4}) {
    Image empty(w, 8);
    EXPECT_EQ(apply(fade, empty, *a, *b, 0.3), kZvGlDone);
    EXPECT_EQ(apply(fade, *large, empty, *b, 0.3), kZvGlDone);
  }
  ZvFreeOpenGLObj();
}

TEST(GlCollection, ProgressIsClampedAndNaNShowsA) {
  const int wipe = zvGlTranFind("wipeRight");
  const ImagePtr a = picture(32, 18, 0), b = picture(32, 18, 1);
  ImagePtr start = zvtest::solid_frame(32, 18, 0, 0, 0), end = zvtest::solid_frame(32, 18, 0, 0, 0);
  ImagePtr out = zvtest::solid_frame(32, 18, 0, 0, 0);
  ASSERT_EQ(apply(wipe, *start, *a, *b, 0.0), kZvGlDone);
  ASSERT_EQ(apply(wipe, *end, *a, *b, 1.0), kZvGlDone);
  for (double p : {-5.0, -HUGE_VAL, std::nan("")}) {
    ASSERT_EQ(apply(wipe, *out, *a, *b, p), kZvGlDone);
    EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(*start)) << p;
  }
  for (double p : {1.5, 1e300, HUGE_VAL}) {
    ASSERT_EQ(apply(wipe, *out, *a, *b, p), kZvGlDone);
    EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(*end)) << p;
  }
  ZvFreeOpenGLObj();
}

// One renderer per frame size and thread serves the whole collection; ZvFreeOpenGLObj frees one a call.
TEST(GlCollection, OneRendererPerSizeAndThreadForEveryTransition) {
  const int before = zv::gl_renderer_count();
  for (int size : {32, 48}) {
    const ImagePtr a = picture(size, size / 2, 0), b = picture(size, size / 2, 1);
    ImagePtr out = zvtest::solid_frame(size, size / 2, 0, 0, 0);
    for (const char* name : {"fade", "wipeLeft", "cube"}) EXPECT_EQ(apply(zvGlTranFind(name), *out, *a, *b, 0.5), 0);
  }
  EXPECT_EQ(zv::gl_renderer_count(), before + 2);
  ZvFreeOpenGLObj();
  ZvFreeOpenGLObj();
  EXPECT_EQ(zv::gl_renderer_count(), before);
}

// Threads draw at once, each on renderers of its own, the bytes one thread draws alone.
TEST(GlCollection, ThreadsDrawTheSameBytesAsOneThread) {
  const ImagePtr a = picture(48, 32, 0), b = picture(48, 32, 1);
  const char* names[] = {"fade", "ripple", "pixelize", "luma"};
  auto draw_all = [&](std::vector<std::vector<uint8_t>>* frames) {
    ImagePtr out = zvtest::solid_frame(48, 32, 0, 0, 0);
    for (const char* name : names) {
      for (double p : {0.25, 0.75}) {
        EXPECT_EQ(apply(zvGlTranFind(name), *out, *a, *b, p), kZvGlDone) << zvGlTranError();
        frames->push_back(zvtest::frame_bytes(*out));
      }
    }
    ZvFreeOpenGLObj();
  };
  std::vector<std::vector<uint8_t>> alone;
  draw_all(&alone);
  std::vector<std::vector<std::vector<uint8_t>>> together(3);
  std::vector<std::thread> threads;
  for (auto& frames : together) threads.emplace_back(draw_all, &frames);
  for (std::thread& t : threads) t.join();
  for (const auto& frames : together) EXPECT_EQ(frames, alone);
}

// What a driver that cannot compile a transition reports: the first line of its log.
TEST(CGlProgram, AShaderThatDoesNotCompileGivesOneLineOfItsLog) {
  CNewDib surface_size(NMEMOD_SECTION);
  surface_size.Create(8, 8, 24, false);
  void* old_bitmap = nullptr;
  void* dc = zv::create_offscreen_dc(surface_size, &old_bitmap);
  void* context = zv::create_gl_context(dc);
  ASSERT_NE(context, nullptr) << "no OpenGL context could be made";
  zv::make_gl_current(dc, context);
  {
    zv::CGlProgram program;
    std::string error;
    EXPECT_FALSE(program.Build("#version 120\nvoid main() { gl_FragColor = vec4(undeclared); }\n", &error));
    EXPECT_FALSE(program.built());
    EXPECT_NE(error.find("undeclared"), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    EXPECT_TRUE(program.Build("#version 120\nuniform float k;\nvoid main() { gl_FragColor = vec4(k); }\n", &error));
    EXPECT_GE(program.Uniform("k"), 0);
    EXPECT_EQ(program.Uniform("absent"), -1);
  }
  zv::make_gl_current(nullptr, nullptr);
  zv::delete_gl_context(context);
  zv::delete_offscreen_dc(dc, old_bitmap);
}

}  // namespace
