// Where scripts have their texts: random ones, held against the syntax stated once more.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "reader/script.h"
#include "reader/value.h"

namespace {

using ruxcomp::reader::Item;
using ruxcomp::reader::Range;
using ruxcomp::reader::Script;
using ruxcomp::reader::Section;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string Trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

std::string WithoutBlanks(std::string text) {
  text.erase(std::remove_if(text.begin(), text.end(), IsBlank), text.end());
  return text;
}

struct StatedItem {
  std::string key;
  std::string value;
  std::size_t line;
};

struct StatedSection {
  std::string name;
  std::size_t line;
  std::vector<StatedItem> items;
};

// A line with those that backslashes join to it, without NUL bytes.
struct StatedLine {
  std::string text;
  std::size_t number;
};

std::vector<StatedLine> StatedLines(std::string text) {
  if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text.erase(0, 3);
  std::vector<StatedLine> lines;
  bool joins = false;
  std::size_t number = 0;
  for (std::size_t at = 0; at < text.size();) {
    ++number;
    const std::size_t line_feed = text.find('\n', at);
    const bool is_last = line_feed == std::string::npos;
    std::string line = text.substr(at, is_last ? std::string::npos : line_feed - at);
    at = is_last ? text.size() : line_feed + 1;
    if (!is_last && !line.empty() && line.back() == '\r') line.pop_back();
    if (!joins) lines.push_back({"", number});
    joins = at < text.size() && !line.empty() && line.back() == '\\';
    if (joins) line.pop_back();
    lines.back().text += line;
  }
  for (StatedLine& line : lines) {
    line.text.erase(std::remove(line.text.begin(), line.text.end(), '\0'), line.text.end());
    line.text = Trimmed(line.text);
  }
  return lines;
}

// The line up to its comment; `equals`: its first '=' outside quotes.
std::string StatedContent(const std::string& line, std::size_t& equals) {
  equals = std::string::npos;
  bool is_quoted = false;
  std::size_t at = 0;
  for (; at < line.size(); ++at) {
    if (line[at] == '"') is_quoted = !is_quoted;
    if (is_quoted) continue;
    if (line[at] == '=') equals = std::min(equals, at);
    if ((line[at] == '#' || line[at] == ';') && at > 0 && IsBlank(line[at - 1])) break;
  }
  return Trimmed(line.substr(0, at));
}

std::string StatedValue(const std::string& text) {
  std::string value;
  bool is_quoted = false;
  bool follows_comma = false;
  for (const char c : text) {
    if (follows_comma && IsBlank(c)) continue;
    follows_comma = c == ',' && !is_quoted;
    while (follows_comma && !value.empty() && IsBlank(value.back())) value.pop_back();
    if (c == '"') is_quoted = !is_quoted;
    value += c;
  }
  return value;
}

std::vector<std::string> StatedParts(std::string value) {
  std::vector<std::string> parts;
  bool goes_on = !value.empty();
  while (goes_on) {
    std::size_t comma = value.find(',');
    const std::size_t quote = value.find('"');
    if (quote < comma) {
      const std::size_t closing = value.find('"', quote + 1);
      parts.push_back(value.substr(quote + 1, closing - quote - 1));
      comma = closing == std::string::npos ? closing : value.find(',', closing);
    } else {
      parts.push_back(value.substr(0, comma));
    }
    goes_on = comma != std::string::npos;
    if (goes_on) value.erase(0, comma + 1);
  }
  return parts;
}

std::vector<StatedSection> Stated(const std::string& text) {
  std::vector<StatedSection> sections;
  for (const auto& [line, number] : StatedLines(text)) {
    if (line.empty() || line[0] == '#' || line[0] == ';') continue;
    std::size_t equals = 0;
    const std::string content = StatedContent(line, equals);
    if (content[0] == '[') {
      sections.push_back({WithoutBlanks(content.substr(1, content.find(']') - 1)), number, {}});
      continue;
    }
    const std::string key = Trimmed(content.substr(0, equals));
    if (sections.empty() || key.empty()) continue;
    const std::string value =
        equals == std::string::npos ? "" : StatedValue(Trimmed(content.substr(equals + 1)));
    sections.back().items.push_back({key, value, number});
  }
  return sections;
}

// Bytes of a file without joins, NUL bytes and blanks.
std::string Bare(std::string bytes) {
  for (std::size_t at = bytes.find('\n'); at != std::string::npos; at = bytes.find('\n')) {
    std::size_t begin = at - 1;
    if (bytes[begin] == '\r') --begin;
    EXPECT_EQ(bytes[begin], '\\') << "only joined lines lie within a text";
    bytes.erase(begin, at + 1 - begin);
  }
  bytes.erase(std::remove(bytes.begin(), bytes.end(), '\0'), bytes.end());
  return WithoutBlanks(bytes);
}

// A text has its range where its own bytes are: the first and the last one are its own. An empty
// one has it after the byte that it follows.
void ExpectRange(const Script& script, std::string_view view, const Range& within) {
  const Range range = script.RangeOf(view);
  ASSERT_LE(range.begin, range.end);
  ASSERT_LE(range.end, script.text().size());
  EXPECT_LE(within.begin, range.begin);
  EXPECT_LE(range.end, within.end);
  const std::string bytes = script.text().substr(range.begin, range.size());
  EXPECT_EQ(Bare(bytes), WithoutBlanks(std::string(view)));
  EXPECT_EQ(bytes.empty(), view.empty());
  if (view.empty()) return;
  EXPECT_EQ(bytes.front(), view.front());
  EXPECT_EQ(bytes.back(), view.back());
}

void ExpectItem(const Script& script, const Item& item, const StatedItem& stated) {
  EXPECT_EQ(item.key, stated.key);
  EXPECT_EQ(ruxcomp::reader::CookedValue(item), stated.value);
  EXPECT_EQ(item.value.size() - item.blanks_at_commas, stated.value.size());
  EXPECT_EQ(item.line, stated.line);
  const Range lines = script.JoinedLines(item.line);
  EXPECT_EQ(script.LineAt(lines.begin), item.line);
  ExpectRange(script, item.key, lines);
  ExpectRange(script, item.value, lines);
  EXPECT_LE(script.RangeOf(item.key).end, script.RangeOf(item.value).begin);

  const std::vector<std::string_view> parts = ruxcomp::reader::Parts(item);
  ASSERT_EQ(std::vector<std::string>(parts.begin(), parts.end()), StatedParts(stated.value));
  EXPECT_EQ(ruxcomp::reader::FirstPart(item), parts.empty() ? std::string_view() : parts.front());
  Range left{script.RangeOf(item.key).end, script.RangeOf(item.value).end};
  for (const std::string_view part : parts) {
    ExpectRange(script, part, left);
    left.begin = script.RangeOf(part).end;
  }
}

void ExpectScript(const std::string& text) {
  const Script script(text, [](const ruxcomp::reader::Problem&) {});
  EXPECT_EQ(script.text(), text);
  const std::vector<StatedSection> stated = Stated(text);
  ASSERT_EQ(script.sections().size(), stated.size());
  for (std::size_t i = 0; i < stated.size(); ++i) {
    const Section& section = script.sections()[i];
    EXPECT_EQ(section.name, stated[i].name);
    EXPECT_EQ(section.line, stated[i].line);
    EXPECT_EQ(section.header.front(), '[');
    ExpectRange(script, section.header, script.JoinedLines(section.line));
    ExpectRange(script, section.name, script.RangeOf(section.header));
    ASSERT_EQ(section.item_count, stated[i].items.size());
    for (std::size_t j = 0; j < section.item_count; ++j) {
      ExpectItem(script, section.items[j], stated[i].items[j]);
      const ruxcomp::reader::ItemPlace place = script.PlaceOf(section.items[j]);
      EXPECT_EQ(place.section, i);
      EXPECT_EQ(place.item, j);
    }
  }
}

// Of what has a meaning in scripts, in the frequencies of `alphabet`.
std::string RandomText(std::mt19937& random, const std::vector<std::string>& alphabet) {
  std::string text = random() % 8 == 0 ? "\xEF\xBB\xBF" : "";
  if (random() % 8 != 0) text += "[A]\n";
  for (std::size_t left = random() % 120; left > 0; --left) {
    text += alphabet[random() % alphabet.size()];
  }
  return text;
}

void ExpectRandomScripts(const std::vector<std::string>& alphabet, unsigned int count) {
  for (unsigned int seed = 0; seed < count; ++seed) {
    std::mt19937 random(seed);
    const std::string text = RandomText(random, alphabet);
    SCOPED_TRACE("seed " + std::to_string(seed) + ": " + testing::PrintToString(text));
    ExpectScript(text);
    if (testing::Test::HasFailure()) return;
  }
}

const std::string kNul(1, '\0');

TEST(RangesTest, OfAnyText) {
  ExpectRandomScripts(
      {"[",  "]",    "=",    ",",      "\"", "#", ";", "\\",           " ",     "\t", "\r",
       "\n", "\r\n", "\\\n", "\\\r\n", kNul, "a", "B", "\xEF\xBB\xBF", "\nK = "},
      10000);
}

// Blanks and quotes between commas, in all the ways in which reading and splitting may see them.
TEST(RangesTest, OfLists) {
  ExpectRandomScripts({",", ",", "\"", "\"", " ", "  ", "a", "b", "\nK =", " # ", "\\\n"}, 10000);
}

TEST(RangesTest, OfListsWithDroppedBytes) {
  ExpectRandomScripts({",", "\"", " ", "a", "\nK = ", "[ a b]", kNul, "\\\n", "\\\r\n"}, 10000);
}

// What one line of three bytes has; the text is found by its range.
std::string Described(const Script& script, std::string_view view) {
  const Range range = script.RangeOf(view);
  return script.text().substr(range.begin, range.size());
}

TEST(RangesTest, OfSections) {
  const Script script("\n [ SEN SOR ] x\n[AB\\\nC", [](const ruxcomp::reader::Problem&) {});
  EXPECT_EQ(script.sections()[0].name, "SENSOR");
  EXPECT_EQ(Described(script, script.sections()[0].name), "SEN SOR");
  EXPECT_EQ(Described(script, script.sections()[0].header), "[ SEN SOR ]");
  EXPECT_EQ(script.sections()[1].name, "ABC");
  EXPECT_EQ(Described(script, script.sections()[1].header), "[AB\\\nC");
}

// The second text in quotes is no part of its own: blanks are dropped outside of it, but within
// what splitting takes for the next part.
TEST(RangesTest, OfAPartThatLosesBlanks) {
  const Script script("[A]\nK = \"a\" \"b,c\" , d\n", [](const ruxcomp::reader::Problem&) {});
  const Item& item = script.sections()[0].items[0];
  EXPECT_EQ(ruxcomp::reader::CookedValue(item), "\"a\" \"b,c\",d");
  const std::vector<std::string_view> parts = ruxcomp::reader::Parts(item);
  ASSERT_EQ(parts, (std::vector<std::string_view>{"a", ",d"}));
  EXPECT_EQ(Described(script, parts[1]), ", d");
}

TEST(RangesTest, OfAnEmptyPart) {
  const Script script("[A]\nK = a, , b,", [](const ruxcomp::reader::Problem&) {});
  const std::vector<std::string_view> parts = ruxcomp::reader::Parts(script.sections()[0].items[0]);
  ASSERT_EQ(parts.size(), 4u);
  EXPECT_EQ(script.RangeOf(parts[1]), (Range{11, 11}));
  EXPECT_EQ(script.RangeOf(parts[3]), (Range{15, 15}));
}

// Problems have the bytes that are wrong.
struct ProblemRow {
  const char* name;
  std::string text;
  std::vector<std::string> bytes;
};

void PrintTo(const ProblemRow& row, std::ostream* out) { *out << row.name; }

class ProblemRangeTest : public testing::TestWithParam<ProblemRow> {};

TEST_P(ProblemRangeTest, Has) {
  std::vector<std::string> bytes;
  const Script script(GetParam().text, [&](const ruxcomp::reader::Problem& problem) {
    bytes.push_back(GetParam().text.substr(problem.range.begin, problem.range.size()));
  });
  EXPECT_EQ(bytes, GetParam().bytes);
}

const ProblemRow kProblems[] = {
    {"TextBeforeTheFirstSection", "\n a = b # c\n", {"a = b"}},
    {"HeaderNotClosed", " [A B # c\n", {"[A B"}},
    {"TextAfterHeader", "[A]  x y # c\n", {"x y"}},
    {"NoKey", "[A]\n  = 5 # c\n", {"= 5"}},
    {"QuoteNotClosed", "[A]\nK = \"a\" \"b # c \n", {"\"b # c"}},
    {"JoinedQuoteNotClosed", "[A]\nK = \\\n\"a\\\nb\n", {"\"a\\\nb"}},
    {"NulByte", "[A]\nK = V" + kNul + kNul + "W" + kNul + "\n", {kNul}},
    {"NulByteInAJoinedLine", "[A]\nK = V\\\nW" + kNul + "\n[" + kNul, {kNul, kNul, "["}},
};
std::string RowName(const testing::TestParamInfo<ProblemRow>& row) { return row.param.name; }

INSTANTIATE_TEST_SUITE_P(Problems, ProblemRangeTest, testing::ValuesIn(kProblems), RowName);

// Blocks of several sizes; a text that has a block of its own.
TEST(RangesTest, OfManyJoinedTexts) {
  std::string text = "[A]\n";
  for (std::size_t i = 1; i < 2000; ++i) text += "K = a\\\n" + std::string(i, 'b') + " , c\n";
  ExpectScript(text);
}

TEST(LinesTest, AreAsInTheFile) {
  const Script script("\xEF\xBB\xBF[A]\r\n\nK = a\\\nb", [](const ruxcomp::reader::Problem&) {});
  ASSERT_EQ(script.line_count(), 4u);
  EXPECT_EQ(script.Line(1), "\xEF\xBB\xBF[A]");
  EXPECT_EQ(script.Line(2), "");
  EXPECT_EQ(script.Line(3), "K = a\\");
  EXPECT_EQ(script.Line(4), "b");
  EXPECT_EQ(script.LineStart(1), 0u);
  EXPECT_EQ(script.LineStart(3), 9u);
  EXPECT_EQ(script.JoinedLines(1), (Range{0, 6}));
  EXPECT_EQ(script.JoinedLines(3), (Range{9, 17}));
}

TEST(LinesTest, HaveTheirOffsets) {
  const Script script("ab\n\nc\n", [](const ruxcomp::reader::Problem&) {});
  ASSERT_EQ(script.line_count(), 3u);
  const std::vector<std::uint32_t> lines{1, 1, 1, 2, 3, 3, 3};
  for (std::size_t at = 0; at < lines.size(); ++at) EXPECT_EQ(script.LineAt(at), lines[at]) << at;
}

TEST(LinesTest, AnEmptyTextHasNone) {
  const Script script("", [](const ruxcomp::reader::Problem&) {});
  EXPECT_EQ(script.line_count(), 0u);
  EXPECT_EQ(script.LineAt(0), 0u);
}

}  // namespace
