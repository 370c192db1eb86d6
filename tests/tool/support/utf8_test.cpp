#include "support/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

using rux::support::Character;
using rux::support::CharacterCounts;
using rux::support::FirstCharacter;
using rux::support::IsUtf8;
using rux::support::LastCharacter;

namespace {

struct Beginning {
  std::string_view text;
  std::size_t size;
  std::int32_t code;
};

TEST(Utf8Test, DecodesTheFirstCharacter) {
  constexpr Beginning kBeginnings[] = {
      {"ab", 1, 'a'},
      {"\x7F", 1, 0x7F},
      {"\xC2\x80", 2, 0x80},
      {"\xDF\xBFx", 2, 0x7FF},
      {"\xE0\xA0\x80", 3, 0x800},
      {"\xED\x9F\xBF", 3, 0xD7FF},
      {"\xEE\x80\x80", 3, 0xE000},
      {"\xF0\x90\x80\x80", 4, 0x10000},
      {"\xF4\x8F\xBF\xBF", 4, 0x10FFFF},
  };
  for (const Beginning& beginning : kBeginnings) {
    const Character character = FirstCharacter(beginning.text);
    EXPECT_EQ(character.bytes, beginning.text.substr(0, beginning.size));
    EXPECT_EQ(character.code, beginning.code);
    EXPECT_EQ(LastCharacter(character.bytes).code, beginning.code);
  }
}

// Bytes that are no character stay together as far as they could have begun one.
TEST(Utf8Test, KeepsBrokenBeginningsTogether) {
  constexpr Beginning kBeginnings[] = {
      {"\x80\x80", 1, -1},
      {"\xC0\xAF", 1, -1},
      {"\xC1\xBF", 1, -1},
      {"\xC3", 1, -1},
      {"\xC3(", 1, -1},
      {"\xE0\x80\x80", 1, -1},
      {"\xE2\x82", 2, -1},
      {"\xE2\x82x", 2, -1},
      {"\xED\xA0\x80", 1, -1},
      {"\xF0\x8F\xBF\xBF", 1, -1},
      {"\xF0\x90\x80", 3, -1},
      {"\xF1\x80\x80x", 3, -1},
      {"\xF4\x90\x80\x80", 1, -1},
      {"\xF5\x80\x80\x80", 1, -1},
      {"\xFF", 1, -1},
  };
  for (const Beginning& beginning : kBeginnings) {
    const Character character = FirstCharacter(beginning.text);
    EXPECT_FALSE(character.is_valid());
    EXPECT_EQ(character.bytes, beginning.text.substr(0, beginning.size));
    EXPECT_FALSE(IsUtf8(beginning.text));
  }
}

TEST(Utf8Test, KnowsWidths) {
  EXPECT_EQ(FirstCharacter("a").Width(), 1U);
  EXPECT_EQ(FirstCharacter("\xC3\xA4").Width(), 1U);          // with dots
  EXPECT_EQ(FirstCharacter("\xCC\x88").Width(), 0U);          // dots that combine
  EXPECT_EQ(FirstCharacter("\xE6\xB8\xA9").Width(), 2U);      // an ideograph
  EXPECT_EQ(FirstCharacter("\xF0\x9F\x98\x80").Width(), 2U);  // an emoji
}

// The counts of long texts of all sorts of bytes are those of going through them.
TEST(Utf8Test, CountsCharactersBeforeEachByte) {
  constexpr std::string_view kPieces[] = {
      "a", "\xC3\xA4", "\xE6\xB8\xA9", "\xF0\x9F\x98\x80", "\xE6\xB8", "\x80", "\xFF", "bc"};
  std::mt19937 random(7);
  for (int run = 0; run < 50; ++run) {
    std::string text;
    const std::size_t size = random() % 1500;
    while (text.size() < size) text += kPieces[random() % std::size(kPieces)];
    const CharacterCounts counts(text);
    std::size_t count = 0;
    std::size_t next = 0;  // where the next character begins
    for (std::size_t at = 0; at <= text.size(); ++at) {
      EXPECT_EQ(counts.Before(at), count) << at;
      if (at < text.size() && at == next) {
        ++count;
        next += FirstCharacter(std::string_view(text).substr(at)).bytes.size();
      }
    }
  }
}

}  // namespace
