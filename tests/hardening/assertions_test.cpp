// A build for tests ends a program that reads beyond a vector.
#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(Assertions, EndTheProgramThatReadsBeyondAVector) {
  const std::vector<int> none;
  const volatile std::size_t place = 0;
  EXPECT_DEATH(static_cast<void>(none[place]), "Assertion");
}

}  // namespace
