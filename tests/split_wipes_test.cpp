// Split, Center Split, Double Slide and Split Back: where each piece of the
// two pictures lands on 720 x 576.
#include "tests/wipe_sources.h"

namespace {

using zvtest::From;
using zvtest::from_a;
using zvtest::from_b;
using zvtest::SourceCase;

constexpr int kSplit = 20, kCenterSplit = 21, kDoubleSlide = 22, kSplitBack = 30;

class SplitWipesTest : public ::testing::TestWithParam<SourceCase> {};

TEST_P(SplitWipesTest, SamplesComeFromTheMovedPieces) { zvtest::expect_sources(GetParam()); }

const SourceCase kCases[] = {
    // The quarters of `a` have moved 180 columns and 144 rows toward the corners.
    {"SplitOpenHalf", kSplit, 0, 0.5, 720, 576, 0,
     [](int x, int y) {
       const bool left = x < 180, right = x >= 540, top = y < 144, bottom = y >= 432;
       if (!(left || right) || !(top || bottom)) return from_b(x, y);
       return from_a(left ? x + 180 : x - 180, top ? y + 144 : y - 144);
     }},
    {"SplitCloseHorizontalQuarter", kSplit, 3, 0.25, 720, 576, 0,
     [](int x, int y) {
       if (x < 90) return from_b(x + 270, y);
       return x >= 630 ? from_b(x - 270, y) : from_a(x, y);
     }},
    {"SplitVerticalOpenQuarter", kSplit, 4, 0.25, 720, 576, 0,
     [](int x, int y) {
       if (y < 216) return from_a(x, y + 72);
       return y >= 360 ? from_a(x, y - 72) : from_b(x, y);
     }},
    // The quarters of `b` come out of the centre, outer corners first.
    {"CenterSplitOpenHalf", kCenterSplit, 0, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (x < 180 || x >= 540 || y < 144 || y >= 432) return from_a(x, y);
       return from_b(x < 360 ? x - 180 : x + 180, y < 288 ? y - 144 : y + 144);
     }},
    // Close at 0.75 is Open at 0.25 with the pictures exchanged: a 180 x 144
    // block of `a` around the centre.
    {"CenterSplitCloseThreeQuarters", kCenterSplit, 1, 0.75, 720, 576, 0,
     [](int x, int y) {
       if (x < 270 || x >= 450 || y < 216 || y >= 360) return from_b(x, y);
       return from_a(x < 360 ? x - 270 : x + 270, y < 288 ? y - 216 : y + 216);
     }},
    {"DoubleSlideUpperBandQuarter", kDoubleSlide, 0, 0.25, 720, 576, 0,
     [](int x, int y) { return y < 288 && x < 360 ? from_b(x + 360, y) : from_a(x, y); }},
    {"DoubleSlideHalf", kDoubleSlide, 0, 0.5, 720, 576, 0,
     [](int x, int y) { return y < 288 ? from_b(x, y) : from_a(x, y); }},
    {"DoubleSlideRightToLeftLowerBand", kDoubleSlide, 1, 0.75, 720, 576, 0,
     [](int x, int y) {
       if (y < 288) return from_b(x, y);
       return x >= 360 ? from_b(x - 360, y) : from_a(x, y);
     }},
    // Each half of `a` at half size against the middle of its side edge.
    {"SplitBackOpenHalf", kSplitBack, 0, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (y < 144 || y >= 432 || (x >= 180 && x < 540)) return from_b(x, y);
       return from_a(x < 180 ? 2 * x : 360 + 2 * (x - 540), 2 * (y - 144));
     }},
    // Close at 0.25 is Open at 0.75 exchanged: `b`'s halves at quarter size.
    {"SplitBackCloseQuarter", kSplitBack, 1, 0.25, 720, 576, 0,
     [](int x, int y) {
       if (y < 216 || y >= 360 || (x >= 90 && x < 630)) return from_a(x, y);
       return from_b(x < 90 ? 4 * x : 360 + 4 * (x - 630), 4 * (y - 216));
     }},
    {"SplitBackOpenHalfChroma", kSplitBack, 0, 0.5, 720, 576, 1,
     [](int x, int y) {
       if (y < 72 || y >= 216 || (x >= 90 && x < 270)) return from_b(x, y);
       return from_a(x < 90 ? 2 * x : 180 + 2 * (x - 270), 2 * (y - 72));
     }},
};

INSTANTIATE_TEST_SUITE_P(Pieces, SplitWipesTest, ::testing::ValuesIn(kCases), zvtest::source_case_name);

}  // namespace
