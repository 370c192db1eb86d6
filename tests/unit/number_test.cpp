// Numbers as the language reads them, held against what strtoul makes of the same texts.
#include "ruxcomp/language/number.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <stdexcept>

#include "frontend/defined_words.h"

using namespace ruxcomp::core;

namespace {

using ruxcomp::language::Number;
using ruxcomp::language::ReadNumber;

// What is fixed, in terms of strtoul.
struct Reference {
  explicit Reference(const std::string& text) {
    if (text.size() > 10) return;
    const bool hexadecimal =
        text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    char* end = nullptr;
    number = std::strtoul(text.c_str(), &end, hexadecimal ? 16 : 10);
    has_rest = end != text.c_str() + text.size();
    stores = true;
    const std::size_t first = hexadecimal ? 2 : 0;
    raises = number == 0 && text.size() <= first;
    answer = number != 0 || (!raises && text[first] == '0') ? 1 : 0;
  }

  unsigned long number = 0;
  std::uint32_t answer = 0;
  bool stores = false;
  bool raises = false;
  bool has_rest = false;
};

void ExpectAsReference(const std::string& text) {
  const Reference expected(text);
  constexpr std::uint32_t kUntouched = 0xABCD1234;
  std::uint32_t out = kUntouched;
  std::uint32_t answer = 0;
  bool raised = false;
  try {
    answer = StringToLong(text, out);
  } catch (const std::out_of_range&) {
    raised = true;
  }
  const std::uint32_t stored =
      expected.stores ? static_cast<std::uint32_t>(expected.number) : kUntouched;
  ASSERT_EQ(answer, expected.answer) << testing::PrintToString(text);
  ASSERT_EQ(raised, expected.raises) << testing::PrintToString(text);
  ASSERT_EQ(out, stored) << testing::PrintToString(text);

  const Number number = ReadNumber(text);
  ASSERT_EQ(number.is_too_long, text.size() > 10) << testing::PrintToString(text);
  ASSERT_EQ(number.raises, expected.raises) << testing::PrintToString(text);
  ASSERT_EQ(number.is_number, expected.answer == 1) << testing::PrintToString(text);
  if (!number.is_number) return;
  const unsigned long magnitude = number.is_negative ? 0 - expected.number : expected.number;
  ASSERT_EQ(number.has_rest, expected.has_rest) << testing::PrintToString(text);
  ASSERT_EQ(number.is_cut, magnitude > 0xFFFFFFFF) << testing::PrintToString(text);
  ASSERT_EQ(number.is_negative, text.find('-') < text.find_first_of("0123456789"))
      << testing::PrintToString(text);
}

// All texts of up to so many of these characters.
void ExpectAll(const std::string& characters, std::size_t longest, const std::string& begin) {
  ExpectAsReference(begin);
  if (begin.size() == longest || testing::Test::HasFatalFailure()) return;
  for (const char c : characters) ExpectAll(characters, longest, begin + c);
}

TEST(NumberTest, ShortTexts) {
  ExpectAll(std::string("019aFgxX-+ \t.\0", 14), 5, "");
  std::string all;
  for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
  ExpectAll(all, 2, "");
}

TEST(NumberTest, RandomTexts) {
  std::mt19937 random(20200714);
  const std::string characters = "0123456789abcdefABCDEFxX-+ \n";
  for (int i = 0; i < 500000 && !HasFatalFailure(); ++i) {
    std::string text(random() % 13, '0');
    for (char& c : text) c = characters[random() % characters.size()];
    if (i % 3 == 1) text.insert(0, "0x");
    if (i % 3 == 2) {
      for (char& c : text) c = characters[random() % 10];
    }
    ExpectAsReference(text);
  }
}

TEST(NumberTest, Edges) {
  for (const char* text : {"4294967295", "4294967296",  "-429496729",
                           "9999999999", "-999999999",  "0xFFFFFFFF",
                           "0x00000000", "0x100000000", "18446744073709551616",
                           "-1",         "+1",          " -1",
                           "- 1",        "--1",         "0x-1",
                           "0x 1",       "0x+1",        "0x0x1",
                           "00x1",       "-0x1",        "\v1",
                           "\f1",        "\r1",         "1e5"}) {
    ExpectAsReference(text);
  }
}

TEST(NumberTest, RaisedErrorNamesTheMissingDigit) {
  std::uint32_t out = 7;
  try {
    StringToLong("0x", out);
    FAIL();
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "basic_string::at");
  }
  EXPECT_EQ(out, 0u);
}

}  // namespace
