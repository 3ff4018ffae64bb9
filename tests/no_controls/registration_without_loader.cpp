// Registration in a process where the host has not loaded its controls module:
// nothing can be named, so nothing is registered, until the module appears.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace {

TEST(RegistrationWithoutControls, RegistersNothingThenEverythingOnceTheLoaderIsLoaded) {
  transition_clear_ops();
  EXPECT_EQ(zvTranInit(), 0);
  EXPECT_EQ(transition_get_op_count(), 0);
  // Without a loader the catalogue still answers, with empty labels.
  EXPECT_EQ(zvTranGetParamExplain(16)->count, 3);
  EXPECT_STREQ(zvTranGetParamExplain(16)->labels[1], "");

  void* controls = dlopen(ZV_CONTROLS_MODULE_PATH, RTLD_NOW);
  ASSERT_NE(controls, nullptr) << dlerror();
  EXPECT_EQ(zvTranInit(), 1);
  EXPECT_EQ(transition_get_op_count(), 66);
  EXPECT_STREQ(transition_get_op_name(66), "Blend");
  // The label table is filled on the first call that finds the loader.
  EXPECT_STREQ(zvTranGetParamExplain(16)->labels[1], "Position(x, y) :");
}

}  // namespace
