// Registration with the host and the style/parameter catalogue.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"
#include "tests/test_support.h"

namespace {

int ZV_STDCALL host_transition(Image*, Image*, Image*, TransitionParams*) { return 0; }

// A host already holding more than ten transitions is taken to hold ours.
TEST(RegistrationTest, RegistersOnlyWhenTheHostHoldsTenOrFewer) {
  for (int held : {0, 10, 11}) {
    SCOPED_TRACE(held);
    transition_clear_ops();
    for (int i = 0; i < held; ++i) transition_add_op(host_transition, ("host " + std::to_string(i)).c_str());
    EXPECT_EQ(zvTranInit(), 1);
    EXPECT_EQ(transition_get_op_count(), held <= 10 ? held + 66 : held);
    if (held <= 10) {
      EXPECT_STREQ(transition_get_op_name(held + 1), "Line Based Wipe");
      EXPECT_STREQ(transition_get_op_name(held + 17), "Overlap Alpha Blend");
      EXPECT_STREQ(transition_get_op_name(held + 66), "Blend");
      EXPECT_EQ(transition_get_op(held + 14), zv::transition_entry(14));
    }
  }
}

TEST(RegistrationTest, EveryIdIsRegisteredInOrderWithItsOwnEntry) {
  zvtest::register_library();
  ASSERT_EQ(transition_get_op_count(), 66);
  for (int id = 1; id <= 66; ++id) {
    EXPECT_EQ(transition_get_op(id), zv::transition_entry(id)) << id;
    EXPECT_STREQ(transition_get_op_name(id), zv::load_library_string(id)) << id;
  }
  EXPECT_EQ(transition_get_op_id("3D Door"), 59);
  // Names in any letter case, as users type them; only whole names.
  for (const auto& [name, id] : {std::pair{"3D Door", 59}, {"3d door", 59}, {"FADE", 14}, {"fad", 0}, {"faded", 0},
                                 {"", 0}}) {
    EXPECT_EQ(transition_find_op_id(name), id) << name;
  }
  EXPECT_EQ(transition_find_op_id(nullptr), 0);
  // A second init finds the set registered and adds nothing.
  EXPECT_EQ(zvTranInit(), 1);
  EXPECT_EQ(transition_get_op_count(), 66);
}

// Hosts rely on the counts, which deliberately disagree with some lists: (id, count, names listed).
TEST(StyleListTest, CountAndListKeepTheirDisagreements) {
  zvtest::register_library();
  const int cases[][3] = {{21, 2, 6}, {22, 2, 8}, {40, 2, 8}, {39, 4, 8}, {58, 4, 8},
                          {17, 0, 0}, {34, 0, 1}, {0, 0, 0},  {67, 0, 0}, {-1, 0, 0}};
  for (const auto& [id, count, listed] : cases) {
    EXPECT_EQ(zvTranGetStyleCount(id), count) << id;
    const char** names = zvTranGetStyleName(id);
    EXPECT_EQ(names == nullptr, listed == 0) << id;
    if (names && listed) {
      EXPECT_NE(names[listed - 1], nullptr) << id;
    }
  }
}

TEST(StyleListTest, NamesComeFromTheLatestCall) {
  zvtest::register_library();
  const char** region = zvTranGetStyleName(5);
  EXPECT_STREQ(region[7], "Diamond Close");
  const char** fade = zvTranGetStyleName(14);
  EXPECT_EQ(fade, region);  // one shared array, overwritten
  EXPECT_STREQ(fade[0], "Normal Switch");
  EXPECT_STREQ(fade[7], "Bottom to Top");
  // A shorter list leaves the entries beyond it as the last call set them.
  const char** split = zvTranGetStyleName(20);
  EXPECT_STREQ(split[5], "Vertical Close");
  const char* third = split[2];
  EXPECT_STREQ(zvTranGetStyleName(12)[1], "Clockwise");
  EXPECT_EQ(split[2], third);
  // The empty-name ids set entry 0 only.
  EXPECT_STREQ(zvTranGetStyleName(37)[0], "");
  EXPECT_STREQ(zvTranGetStyleName(37)[1], "Clockwise");
}

TEST(ParamExplainTest, LabelsByIdKeepTheirBlanksAndQuirks) {
  zvtest::register_library();
  zvTarnParamExplain* e = zvTranGetParamExplain(16);
  ASSERT_EQ(e->count, 3);
  EXPECT_STREQ(e->labels[0], "Style:");
  EXPECT_STREQ(e->labels[1], "Position(x, y) :");
  EXPECT_STREQ(e->labels[2], "     Size(width,height) : ");
  EXPECT_EQ(e->labels[3], nullptr);
  EXPECT_EQ(zvTranGetParamExplain(47)->count, 0);  // three styles, yet no labels
  e = zvTranGetParamExplain(34);
  EXPECT_EQ(e->count, 1);
  EXPECT_EQ(e->labels[0], nullptr);
  EXPECT_EQ(zvTranGetParamExplain(17)->count, 0);
  EXPECT_EQ(zvTranGetParamExplain(67)->count, 0);
  EXPECT_STREQ(zvTranGetParamExplain(46)->labels[2], "Box_Y (<50): ");
}

TEST(ParamExplainTest, ByNameUsesTheHostsIdAsItComes) {
  transition_clear_ops();
  for (int i = 0; i < 10; ++i) transition_add_op(host_transition, ("host " + std::to_string(i)).c_str());
  ASSERT_EQ(zvTranInit(), 1);
  // "Fade" is the host's id 24, which the catalogue reads as Triangle Push.
  EXPECT_EQ(zvTranGetParamExplain("Fade")->count, 1);
  EXPECT_EQ(zvTranGetParamExplain("Cross Based Wipe")->count, 3);  // host id 19, read as Wipe
  EXPECT_EQ(zvTranGetParamExplain("Unknown")->count, 0);
  zvtest::register_library();
  EXPECT_EQ(zvTranGetParamExplain("Cross Based Wipe")->count, 2);
}

}  // namespace
