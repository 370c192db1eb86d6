// The syntax tree: every byte has its place, and the items are those of the script.
#include "reader/syntax_tree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/generators/garbage.h"
#include "tests/generators/random_layout.h"
#include "tests/generators/random_script.h"
#include "tests/support/tree_fault.h"

namespace {

using ruxcomp::reader::LineKind;
using ruxcomp::reader::SyntaxLine;
using ruxcomp::reader::SyntaxTree;
using ruxcomp::reader::Token;
using ruxcomp::reader::TokenKind;

void Ignore(const ruxcomp::reader::Problem&) {}

// The first letters of the kinds, but for those that would be alike.
char LetterOf(TokenKind kind) {
  switch (kind) {
    case TokenKind::kByteOrderMark:
      return 'M';
    case TokenKind::kBlanks:
      return '_';
    case TokenKind::kComment:
      return '#';
    case TokenKind::kOpenBracket:
      return '[';
    case TokenKind::kSectionName:
      return 'N';
    case TokenKind::kCloseBracket:
      return ']';
    case TokenKind::kKey:
      return 'K';
    case TokenKind::kEquals:
      return '=';
    case TokenKind::kPart:
      return 'P';
    case TokenKind::kComma:
      return ',';
    case TokenKind::kQuote:
      return '"';
    case TokenKind::kDropped:
      return 'D';
    case TokenKind::kNul:
      return '0';
    case TokenKind::kContinuation:
      return '\\';
    case TokenKind::kLineEnd:
      return 'E';
  }
  return '?';
}

// The tokens by their letters, a word for each line.
std::string Letters(const std::string& text) {
  const SyntaxTree tree(text, Ignore);
  EXPECT_EQ(tree::FaultOf(tree), "") << testing::PrintToString(text);
  std::string letters;
  for (const SyntaxLine& line : tree.lines()) {
    if (!letters.empty()) letters += ' ';
    for (const Token& token : tree.TokensOf(line)) letters += LetterOf(token.kind);
  }
  return letters;
}

TEST(SyntaxTreeTest, HasTokensOfEveryKind) {
  EXPECT_EQ(Letters(""), "");
  EXPECT_EQ(Letters("\n \n\t"), "E _E _");
  EXPECT_EQ(Letters("\xEF\xBB\xBF# a b \r\n"), "M#_E");
  EXPECT_EQ(Letters("[ SEN SOR ]\t; x\n"), "[_N_N_]_#E");
  EXPECT_EQ(Letters("[A]\nNAME = CPU 0 , \"b, c\",,x # y\n"), "[N]E K_=_P_,_\"P\",,P_#E");
  EXPECT_EQ(Letters("[A]\nFLAG\nA=\nA=,\n"), "[N]E KE K=E K=,E");
  EXPECT_EQ(Letters("[A]\nS = 1, \\\n  2\n"), "[N]E K_=_P,_\\_PE");
  EXPECT_EQ(Letters("[A]\n# a \\\r\n b\n"), "[N]E #\\#E");
}

TEST(SyntaxTreeTest, HasWhatIsDropped) {
  EXPECT_EQ(Letters("\xEF\xBB\xBF"), "");
  EXPECT_EQ(Letters("a, \"b\" # c\n"), "D,_\"D\"_#E");
  EXPECT_EQ(Letters("[A] b, c\n"), "[N]_D,_DE");
  EXPECT_EQ(Letters("[A\n = 5\n"), "[NE _D_DE");
  EXPECT_EQ(Letters("[A]\nP = a \"q\" b\n"), "[N]E K_=_D_\"P\"_DE");
  EXPECT_EQ(Letters("[A]\nP = \"q # b\n"), "[N]E K_=_\"PE");
  EXPECT_EQ(Letters(std::string("[A]\nK\0Y = 1\0,2", 14)), "[N]E K0K_=_P0,P");
}

TEST(SyntaxTreeTest, HasPartsThatLinesInterrupt) {
  EXPECT_EQ(Letters("[A]\nS = 0x\\\n12\n"), "[N]E K_=_P\\PE");
  EXPECT_EQ(Letters("[A]\nKEY\\\n2\\\n = \\\n\\\n1\n"), "[N]E K\\K\\_=_\\\\PE");
  EXPECT_EQ(Letters("[A]\nS = 1 \\\n"), "[N]E K_=_PE");  // nothing follows
  EXPECT_EQ(Letters("[A\\\nB]\n"), "[N\\N]E");
}

TEST(SyntaxTreeTest, KnowsWhatALineBelongsTo) {
  const SyntaxTree tree("# a\n[A]\nX = 1\n\nY = \\\n2\n[B]\n[C]\nZ = 3", Ignore);
  ASSERT_EQ(tree.lines().size(), 8u);
  EXPECT_EQ(tree.LinesBeforeSections().size(), 1u);
  EXPECT_EQ(tree.LinesOf(0).size(), 4u);
  EXPECT_EQ(tree.LinesOf(1).size(), 1u);
  EXPECT_EQ(tree.LinesOf(2).size(), 2u);
  const SyntaxLine& y = *tree.LineAt(tree.text().find('2'));
  EXPECT_EQ(y.number, 5u);
  EXPECT_EQ(tree.SectionOf(y)->name, "A");
  EXPECT_EQ(tree.ItemOf(y)->key, "Y");
  EXPECT_EQ(tree.PlaceOf(y)->item, 1u);
  EXPECT_EQ(&tree.LineOf({0, 1}), &y);
  EXPECT_EQ(tree.LineAt(10000)->number, 9u);
  EXPECT_EQ(tree.TextOf(*tree.TokenAt(10000)), "3");
  EXPECT_EQ(tree.SectionOf(*tree.LineAt(0)), nullptr);
  EXPECT_EQ(tree.ItemOf(*tree.LineAt(0)), nullptr);
}

TEST(SyntaxTreeTest, OfNothingHasNothing) {
  const SyntaxTree tree("", Ignore);
  EXPECT_EQ(tree.LineAt(0), nullptr);
  EXPECT_EQ(tree.TokenAt(0), nullptr);
  EXPECT_TRUE(tree.LinesBeforeSections().empty());
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::filesystem::path> ScriptsOfTheTree() {
  std::vector<std::filesystem::path> scripts;
  for (const char* folder : {RUX_SOURCE_DIR "/examples", RUX_SOURCE_DIR "/tests/tool/boards"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      if (entry.path().extension() == ".rux") scripts.push_back(entry.path());
    }
  }
  return scripts;
}

TEST(SyntaxTreeTest, HasEveryByteOfExamples) {
  const std::vector<std::filesystem::path> scripts = ScriptsOfTheTree();
  EXPECT_GT(scripts.size(), 15u);
  for (const std::filesystem::path& script : scripts) {
    EXPECT_EQ(tree::FaultOf(SyntaxTree(ReadFile(script), Ignore)), "") << script;
  }
}

TEST(SyntaxTreeTest, HasEveryByteOfBeginnings) {
  const std::string text = ReadFile(RUX_SOURCE_DIR "/examples/first/first.rux");
  for (std::size_t size = 0; size <= text.size(); ++size) {
    ASSERT_EQ(tree::FaultOf(SyntaxTree(text.substr(0, size), Ignore)), "") << size;
  }
}

// Of a long script, beginnings differ in their last lines only.
TEST(SyntaxTreeTest, HasEveryByteOfEnds) {
  for (const std::filesystem::path& script : ScriptsOfTheTree()) {
    const std::string text = ReadFile(script);
    for (std::size_t size = 0; size <= text.size(); size += 1 + text.size() / 500) {
      const std::size_t line = text.rfind('\n', size);
      const std::size_t begin = line == std::string::npos || line < 200 ? 0 : line - 200;
      ASSERT_EQ(tree::FaultOf(SyntaxTree(text.substr(begin, size - begin), Ignore)), "")
          << script << ' ' << size;
    }
  }
}

TEST(SyntaxTreeTest, HasEveryByteOfRandomScripts) {
  for (unsigned int seed = 0; seed < 200; ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    for (auto& [path, text] : RandomLayout(random, sections)) {
      ASSERT_EQ(tree::FaultOf(SyntaxTree(text, Ignore)), "") << seed << ' ' << path;
      Damage(random, text);
      ASSERT_EQ(tree::FaultOf(SyntaxTree(text, Ignore)), "")
          << seed << testing::PrintToString(text);
    }
  }
}

TEST(SyntaxTreeTest, HasEveryByteOfGarbage) {
  for (unsigned int seed = 0; seed < 20000; ++seed) {
    Random random(seed);
    const std::string text = "[A]\n" + RandomGarbage(random);
    ASSERT_EQ(tree::FaultOf(SyntaxTree(text, Ignore)), "") << seed << testing::PrintToString(text);
  }
}

}  // namespace
