// Frames, parameter blocks and comparisons shared by the tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "frame/transition_op.h"
#include "host/image.h"

namespace zvtest {

using ImagePtr = std::unique_ptr<Image>;

// A frame with every Y, U and V sample set to the given values.
ImagePtr solid_frame(int width, int height, uint8_t y, uint8_t u, uint8_t v);
// A frame of random samples from a fixed seed.
ImagePtr random_frame(int width, int height, uint32_t seed, int chroma_format = kChroma420);

// An enabled block: style, position over a duration of 1.0 unless told.
TransitionParams make_params(int style, double position, double duration = 1.0);

// All planes of a frame, Y then U then V.
std::vector<uint8_t> frame_bytes(const Image& image);
// One plane.
std::vector<uint8_t> plane_bytes(const Image& image, int plane);
// Sample (x, y) of a plane.
uint8_t sample(const Image& image, int plane, int x, int y);

// Runs transition `id` on an enabled block (see make_params) with the two parameters.
int run_transition(int id, Image* out, Image* a, Image* b, int style, double position, int param1 = 0,
                   double param2 = 0.0);

// Whether every sample (x, y) of a plane is expected(x, y); the message names the first that is not.
::testing::AssertionResult samples_are(const Image& image, int plane, const std::function<int(int, int)>& expected);

// Puts the library's per-thread random generator back to a fixed state, so
// two runs of a randomised transition draw the same numbers.
void reset_random_state();

// Registers the library with the test host once (a fresh registry).
void register_library();

}  // namespace zvtest
