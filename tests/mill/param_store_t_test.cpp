#include "interp/param_store_t.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace mill {

TEST(ParamStore, CallGivesArgumentsAndRestoresTheCallersOnReturn) {
  param_store_t params;
  params.set(1, 7);
  params.set(3, 9);
  params.set(31, 4);
  params.enter_call({1.5, 2.5});
  EXPECT_EQ(params.get(1), 1.5);
  EXPECT_EQ(params.get(2), 2.5);
  EXPECT_EQ(params.get(3), 0);   // arguments not passed start at zero
  EXPECT_EQ(params.get(31), 4);  // above the arguments everything is global
  params.set(1, 100);
  params.set(31, 5);
  params.leave_call();
  EXPECT_EQ(params.get(1), 7);
  EXPECT_EQ(params.get(3), 9);
  EXPECT_EQ(params.get(31), 5);
}

TEST(ParamStore, NamesAreLocalToACallUnlessTheyStartWithUnderscore) {
  param_store_t params;
  params.set("outer", 1);
  params.set("_shared", 2);
  params.enter_call({});
  EXPECT_THROW(params.get("outer"), std::invalid_argument);
  EXPECT_EQ(params.get("_shared"), 2);
  params.set("outer", 10);
  params.set("_shared", 20);
  params.leave_call();
  EXPECT_EQ(params.get("outer"), 1);
  EXPECT_EQ(params.get("_shared"), 20);
}

TEST(ParamStore, RejectsBadReferences) {
  param_store_t params;
  EXPECT_THROW(params.get(0), std::invalid_argument);
  EXPECT_THROW(params.set(param_store_t::max_index + 1, 1), std::invalid_argument);
  EXPECT_THROW(params.get("never_set"), std::invalid_argument);
  EXPECT_THROW(params.enter_call(std::vector<double>(31, 0.0)), std::invalid_argument);
}

}  // namespace mill
