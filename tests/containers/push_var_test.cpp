// tests/containers/push_var_test.cpp
//
// ZtPushVar: the value holds for the guard's lifetime and comes back on every way out.
#include "zt/containers/push_var.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(PushVar, RestoresInReverseOrderAndWhenAnExceptionLeavesTheScope) {
  int v = 5;
  {
    ZtPushVar<int> outer(v, 9);
    {
      ZtPushVar<int> inner(v, 7);
      EXPECT_EQ(v, 7);
    }
    EXPECT_EQ(v, 9);  // the value outer set, restored
  }
  EXPECT_EQ(v, 5);
  try {
    ZtPushVar<int> guard(v, 1);
    throw std::runtime_error("leave");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(v, 5);
  }
}

}  // namespace
