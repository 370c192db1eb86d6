// A fixture for tests that build the source model by hand.
#ifndef TESTS_UNIT_MODEL_TEST_H_
#define TESTS_UNIT_MODEL_TEST_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frontend/section.h"
#include "frontend/text.h"
#include "tests/support/host.h"

using Texts = std::vector<std::string>;
inline Texts TextsOf(const ruxcomp::core::TextList& list) { return {list.begin(), list.end()}; }

class ModelTest : public ::testing::Test {
 protected:
  void SetUp() override { host::TakeMessages(); }
  void TearDown() override { ruxcomp::core::CRUXSection::Destory(); }

  // A new section of that keyword, which must be known.
  static ruxcomp::core::CRUXSection& Create(const std::string& keyword,
                                            const std::string& file = "board.rux",
                                            std::uint32_t line = 1) {
    ruxcomp::core::CRUXSection* section = ruxcomp::core::CRUXSection::Create(file, keyword, line);
    EXPECT_NE(section, nullptr) << keyword;
    return *section;
  }
};

#endif  // TESTS_UNIT_MODEL_TEST_H_
