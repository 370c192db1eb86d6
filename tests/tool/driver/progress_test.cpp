#include "driver/progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace {

using rux::driver::Progress;
using std::chrono::milliseconds;

class ProgressTest : public testing::Test {
 protected:
  Progress ProgressOf(std::size_t total, std::size_t columns) {
    return {total, columns, [this] { return now_; },
            [this](std::string_view text) { printed_ += text; }};
  }

  void Wait(milliseconds time) { now_ += time; }

  std::string TakePrinted() { return std::exchange(printed_, ""); }

 private:
  std::chrono::steady_clock::time_point now_;
  std::string printed_;
};

TEST_F(ProgressTest, BeginsAfterASecond) {
  Progress progress = ProgressOf(4, 20);
  progress.Show(1, "a.rux");
  Wait(milliseconds(999));
  progress.Show(2, "b.rux");
  progress.Erase();
  EXPECT_EQ(TakePrinted(), "");
  Wait(milliseconds(1));
  progress.Show(3, "c.rux");
  EXPECT_EQ(TakePrinted(), "\r\x1B[K[3/4] c.rux");
  progress.Erase();
  EXPECT_EQ(TakePrinted(), "\r\x1B[K");
  progress.Erase();
  EXPECT_EQ(TakePrinted(), "");
  Wait(milliseconds(1000));
  progress.Show(4, "d.rux");
  EXPECT_EQ(TakePrinted(), "") << "after the last one there is nothing to wait for";
}

TEST_F(ProgressTest, FitsTheTerminal) {
  Progress progress = ProgressOf(9, 20);
  Wait(milliseconds(1000));
  progress.Show(1, "boards/long.rux");
  EXPECT_EQ(TakePrinted(), "\r\x1B[K[1/9] boards/long.r");
  Wait(milliseconds(99));
  progress.Show(2, "too-soon.rux");
  EXPECT_EQ(TakePrinted(), "");
  Wait(milliseconds(1));
  progress.Show(3, "\x1B[31m.rux");
  EXPECT_EQ(TakePrinted(), "\r\x1B[K[3/9] \\x1B[31m.rux");

  Progress hidden = ProgressOf(9, 0);
  Wait(milliseconds(1000));
  hidden.Show(1, "a.rux");
  EXPECT_EQ(TakePrinted(), "") << "without a terminal";
}

}  // namespace
