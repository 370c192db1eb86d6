// Much text, and text that nobody would write.
#include <random>
#include <string_view>

#include "tests/reader/plugin_host.h"

namespace {

class VolumeTest : public PluginTest {};

// 1000 sections of one header and 999 items.
std::string MillionLines() {
  std::string text;
  for (int section = 0; section < 1000; ++section) {
    text += "[SECTION_" + std::to_string(section) + "]\n";
    for (int item = 0; item < 999; ++item) {
      text += "KEY_" + std::to_string(item) + " = " + std::to_string(section) + ", \"a , b\" # c\n";
    }
  }
  return text;
}

TEST_F(VolumeTest, AMillionLinesAreRead) {
  void* file = Load(folder.Write("million.rux", MillionLines()));
  ASSERT_NE(file, nullptr);
  const std::vector<HostSection> sections = ReadAll(file);
  ASSERT_EQ(sections.size(), 1000u);
  for (const HostSection& section : sections) ASSERT_EQ(section.items.size(), 999u);
  EXPECT_EQ(sections.back().name, "SECTION_999");
  EXPECT_EQ(sections.back().line, 999001u);
  EXPECT_EQ(sections.back().items.back().key, "KEY_998");
  EXPECT_EQ(sections.back().items.back().value, "999,\"a , b\"");
  EXPECT_EQ(sections.back().items.back().line, 1000000u);
  EXPECT_TRUE(Messages().empty());
  close_file(&file);
}

// One item of a million lines.
TEST_F(VolumeTest, AMillionLinesAreJoined) {
  std::string text = "[A]\nK = 0";
  for (int i = 1; i < 1000000; ++i) text += " , \\\n" + std::to_string(i % 10);
  void* file = Load(folder.Write("joined.rux", text + "\nL = 1\n"));
  ASSERT_NE(file, nullptr);
  const std::vector<HostSection> sections = ReadAll(file);
  ASSERT_EQ(sections.size(), 1u);
  ASSERT_EQ(sections[0].items.size(), 2u);
  // A million digits and the commas between them.
  EXPECT_EQ(sections[0].items[0].value.size(), 1999999u);
  EXPECT_EQ(sections[0].items[0].value.substr(0, 5), "0,1,2");
  EXPECT_EQ(sections[0].items[0].line, 2u);
  EXPECT_EQ(sections[0].items[1].line, 1000002u);
  close_file(&file);
}

// Mostly what has a meaning in scripts, else any byte.
std::string RandomText(unsigned int seed) {
  constexpr std::string_view kMeaningful("[]=,\"#;\\ \t\r\n\n\n\0aB\xEF\xBB\xBF", 20);
  std::mt19937 random(seed);
  std::string text(random() % 400, '\0');
  for (char& c : text) {
    c = random() % 8 == 0 ? static_cast<char>(random() % 256)
                          : kMeaningful[random() % kMeaningful.size()];
  }
  return text;
}

bool IsTrimmed(const std::string& text) {
  constexpr auto kBlanks = " \t";
  return text.empty() ||
         (text.find_first_of(kBlanks) != 0 && text.find_last_of(kBlanks) != text.size() - 1);
}

// Reading checks that every text is exactly as long as it was announced, so none holds a NUL byte.
TEST_F(VolumeTest, RandomBytesAreRead) {
  std::size_t items = 0;
  for (unsigned int seed = 0; seed < 5000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    void* file = Load(folder.Write("random.rux", RandomText(seed)));
    ASSERT_NE(file, nullptr);
    std::uint32_t line = 0;
    for (const HostSection& section : ReadAll(file)) {
      EXPECT_EQ(section.name.find_first_of(" \t\n]"), std::string::npos);
      EXPECT_LT(line, section.line);
      line = section.line;
      for (const HostItem& item : section.items) {
        EXPECT_NE(item.key, "");
        EXPECT_NE(item.key[0], '[');
        EXPECT_TRUE(IsTrimmed(item.key)) << item.key;
        EXPECT_TRUE(IsTrimmed(item.value)) << item.value;
        EXPECT_EQ((item.key + item.value).find('\n'), std::string::npos);
        EXPECT_LT(line, item.line);
        line = item.line;
        ++items;
      }
    }
    close_file(&file);
    if (HasFailure()) break;
  }
  EXPECT_GT(items, 5000u);
}

}  // namespace
