// What holds for formatting any script: idempotent, on the same lines, with the same meaning.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "format/format.h"
#include "format/line_edits.h"
#include "reader/byte_order_mark.h"
#include "reader/script.h"
#include "reader/value.h"
#include "tests/generators/garbage.h"
#include "tests/generators/random_layout.h"
#include "tests/generators/random_script.h"

namespace {

using ruxcomp::reader::Item;
using ruxcomp::reader::Script;

char Folded(char c) { return c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string Folded(std::string text) {
  for (char& c : text) c = Folded(c);
  return text;
}

// Sections, keys and values with their lines: what the library gets.
std::string Delivered(const std::string& text, bool with_lines) {
  std::string all;
  const Script script(text, [&](const ruxcomp::reader::Problem& problem) {
    all += "! " + std::to_string(problem.line);
  });
  for (const auto& section : script.sections()) {
    all +=
        (with_lines ? std::to_string(section.line) : "") + "[" + std::string(section.name) + "]\n";
    for (std::size_t i = 0; i < section.item_count; ++i) {
      const Item& item = section.items[i];
      all += (with_lines ? std::to_string(item.line) : "") + "<" + std::string(item.key) + "><" +
             Folded(CookedValue(item)) + ">\n";
    }
  }
  return all;
}

// Of all lines, what no blank and no digit's case changes.
std::string Bare(const std::string& text) {
  std::string bare;
  for (const char c : text) {
    if (c != ' ' && c != '\t') bare += Folded(c);
  }
  return bare;
}

std::string WithoutEmptyLines(const std::string& text) {
  std::string all;
  const std::size_t begin = ruxcomp::reader::StartsWithMark(text) ? 3 : 0;
  for (std::size_t at = begin; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string line = text.substr(at, end - at);
    if (line != "\n" && line != "\r\n") all += line;
    at = end;
  }
  return all;
}

// The text with the edits of all lines, or of those whose number leaves that rest by 2.
std::string Edited(std::string text, const std::string& formatted, std::uint32_t rest = 2) {
  std::vector<rux::format::LineEdit> edits = rux::format::LineEdits(text, formatted);
  for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
    if (rest < 2 && edit->line % 2 != rest) continue;
    text.replace(edit->bytes.begin, edit->bytes.end - edit->bytes.begin, edit->text);
  }
  return text;
}

// How many texts were changed.
std::size_t ExpectSound(const std::string& text) {
  const rux::format::Formatted once = rux::format::Format(text);
  if (once.refusal) {
    EXPECT_NE(once.refusal->reason, rux::format::kReadDifferently);
    EXPECT_EQ(once.text, text);
    return 0;
  }
  EXPECT_EQ(Bare(once.text), Bare(text));
  EXPECT_EQ(Delivered(once.text, true), Delivered(text, true));
  EXPECT_EQ(rux::format::Format(once.text).text, once.text);
  EXPECT_EQ(Edited(text, once.text), once.text);
  for (const std::uint32_t rest : {0U, 1U}) {
    EXPECT_EQ(Delivered(Edited(text, once.text, rest), true), Delivered(text, true));
  }
  const rux::format::Formatted spaced = rux::format::Format(text, {true});
  EXPECT_FALSE(spaced.refusal);
  EXPECT_EQ(Delivered(spaced.text, false), Delivered(text, false));
  EXPECT_EQ(rux::format::Format(spaced.text, {true}).text, spaced.text);
  EXPECT_EQ(WithoutEmptyLines(Bare(spaced.text)), WithoutEmptyLines(Bare(text)));
  return once.text == text ? 0 : 1;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(FormatPropertiesTest, HoldForExamples) {
  std::size_t scripts = 0;
  for (const char* folder : {RUX_SOURCE_DIR "/examples", RUX_SOURCE_DIR "/tests/tool/boards"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      if (entry.path().extension() != ".rux") continue;
      SCOPED_TRACE(entry.path());
      ExpectSound(ReadFile(entry.path()));
      ++scripts;
    }
  }
  EXPECT_GT(scripts, 15u);
}

TEST(FormatPropertiesTest, HoldForRandomScripts) {
  std::size_t changed = 0;
  for (unsigned int seed = 0; seed < 300 && !HasFailure(); ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    for (auto& [path, text] : RandomLayout(random, sections)) {
      SCOPED_TRACE(std::to_string(seed) + ' ' + path + ' ' + testing::PrintToString(text));
      changed += ExpectSound(text);
      Damage(random, text);
      ExpectSound(text);
    }
  }
  EXPECT_GT(changed, 150u);
}

TEST(FormatPropertiesTest, HoldForGarbage) {
  for (unsigned int seed = 0; seed < 20000 && !HasFailure(); ++seed) {
    Random random(seed);
    const std::string text = "[DEFINE]\n" + RandomGarbage(random);
    SCOPED_TRACE(std::to_string(seed) + ' ' + testing::PrintToString(text));
    ExpectSound(text);
  }
}

}  // namespace
