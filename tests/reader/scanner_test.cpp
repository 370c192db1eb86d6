// The syntax of scripts, row by row.
#include <gtest/gtest.h>

#include "reader/messages.h"
#include "reader/script.h"
#include "reader/value.h"

namespace {

using namespace std::string_literals;

// A message's own words.
std::string Words(const std::string& message) {
  const std::string place = "Error[%s:%u]: ";
  EXPECT_EQ(message.substr(0, place.size()), place);
  EXPECT_EQ(message.back(), '\n');
  return message.substr(place.size());
}

// One row per section ("line [name]"), item ("line <key> <value>") and problem ("! line text").
std::string Dump(const std::string& text) {
  std::string problems;
  const ruxcomp::reader::Script script(text, [&](const ruxcomp::reader::Problem& problem) {
    problems += "! " + std::to_string(problem.line) + " " +
                Words(ruxcomp::reader::FormatOf(problem.message));
  });
  std::string dump;
  for (const ruxcomp::reader::Section& section : script.sections()) {
    dump += std::to_string(section.line) + " [" + std::string(section.name) + "]\n";
    for (std::uint32_t i = 0; i < section.item_count; ++i) {
      const ruxcomp::reader::Item& item = section.items[i];
      dump += std::to_string(item.line) + " <" + std::string(item.key) + "> <" +
              ruxcomp::reader::CookedValue(item) + ">\n";
    }
  }
  return dump + problems;
}

struct Row {
  const char* name;
  std::string text;
  std::string dump;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class ScannerTest : public testing::TestWithParam<Row> {};

TEST_P(ScannerTest, Reads) {
  EXPECT_EQ(Dump(GetParam().text), GetParam().dump) << testing::PrintToString(GetParam().text);
}

std::string RowName(const testing::TestParamInfo<Row>& info) { return info.param.name; }

const Row kLines[] = {
    {"Nothing", "", ""},
    {"BlankLines", " \n\t\n\r\n \t \r\n", ""},
    {"SectionAndItem", "[A]\nK=V\n", "1 [A]\n2 <K> <V>\n"},
    {"NoLineFeedAtTheEnd", "[A]\nK=V", "1 [A]\n2 <K> <V>\n"},
    {"CarriageReturns", "[A]\r\nK = V\r\n\r\nL\r\n", "1 [A]\n2 <K> <V>\n4 <L> <>\n"},
    {"LoneCarriageReturnIsText", "[A]\nK = a\rb\n", "1 [A]\n2 <K> <a\rb>\n"},
    {"OnlyTheLastCarriageReturnEndsALine", "[A]\nK=V\r\r\n", "1 [A]\n2 <K> <V\r>\n"},
    {"CarriageReturnAtTheEndIsText", "[A]\nK=V\r", "1 [A]\n2 <K> <V\r>\n"},
    {"ByteOrderMark", "\xEF\xBB\xBF[A]\nK=V\n", "1 [A]\n2 <K> <V>\n"},
    {"OnlyByteOrderMark", "\xEF\xBB\xBF", ""},
    {"ByteOrderMarkLaterIsText", "[A]\n\xEF\xBB\xBFK=V\n", "1 [A]\n2 <\xEF\xBB\xBFK> <V>\n"},
    {"HighBytes", "[\xC3\x84]\n\x80 = \xFF\xFE\n", "1 [\xC3\x84]\n2 <\x80> <\xFF\xFE>\n"},
    {"OtherControlCharactersAreText", "[A]\nK = \f\v\x01\n", "1 [A]\n2 <K> <\f\v\x01>\n"},
    {"OrderAndRepeatsAreKept", "[B]\nK=2\nK=1\nK=2\n[A]\n[B]\nK=3\n",
     "1 [B]\n2 <K> <2>\n3 <K> <1>\n4 <K> <2>\n5 [A]\n6 [B]\n7 <K> <3>\n"},
};
INSTANTIATE_TEST_SUITE_P(Lines, ScannerTest, testing::ValuesIn(kLines), RowName);

const Row kHeaders[] = {
    {"BlanksInsideAreDropped", "[ SEN\tS OR ]\n", "1 [SENSOR]\n"},
    {"BlanksOutside", " \t[A]\t \n", "1 [A]\n"},
    {"NoName", "[]\n[ ]\n", "1 []\n2 []\n"},
    {"EqualsIsPartOfTheName", "[A=B]\n", "1 [A=B]\n"},
    {"SecondOpeningBracketIsPartOfTheName", "[[A]\n", "1 [[A]\n"},
    {"NotClosed", "[A\nK=V\n", "1 [A]\n2 <K> <V>\n! 1 Section header is not closed.\n"},
    {"NotClosedAtTheEnd", "[", "1 []\n! 1 Section header is not closed.\n"},
    {"NotClosedWithBlanks", "[A B \n", "1 [AB]\n! 1 Section header is not closed.\n"},
    {"NotClosedBeforeAComment", "[A # B]\n", "1 [A]\n! 1 Section header is not closed.\n"},
    {"TextAfter", "[A] x\nK=V\n",
     "1 [A]\n2 <K> <V>\n! 1 Text after the section header is ignored.\n"},
    {"SecondClosingBracket", "[A]]\n", "1 [A]\n! 1 Text after the section header is ignored.\n"},
    {"ItemAfter", "[A] K=V\n", "1 [A]\n! 1 Text after the section header is ignored.\n"},
    {"CommentAfter", "[A] # x\n[B]\t;x\n", "1 [A]\n2 [B]\n"},
    {"CommentSignRightAfterIsText", "[A]#x\n[B];\n",
     "1 [A]\n2 [B]\n"
     "! 1 Text after the section header is ignored.\n"
     "! 2 Text after the section header is ignored.\n"},
    {"TextAndCommentAfter", "[A] x # y\n",
     "1 [A]\n! 1 Text after the section header is ignored.\n"},
    {"QuoteInside", "[\"A\"]\n", "1 [\"A\"]\n"},
    {"QuoteNotClosed", "[\"A]\n", "1 [\"A]\n! 1 Double quote is not closed.\n"},
};
INSTANTIATE_TEST_SUITE_P(Headers, ScannerTest, testing::ValuesIn(kHeaders), RowName);

const Row kItems[] = {
    {"KeyAndValueAreTrimmed", "[A]\n \tK\t =\t V \t\n", "1 [A]\n2 <K> <V>\n"},
    {"BlanksWithinAreKept", "[A]\na  b = c \t d\n", "1 [A]\n2 <a  b> <c \t d>\n"},
    {"FirstEqualsSplits", "[A]\nK = a = b\nL==\n", "1 [A]\n2 <K> <a = b>\n3 <L> <=>\n"},
    {"EqualsInQuotesDoesNotSplit", "[A]\n\"a=b\" = c\n", "1 [A]\n2 <\"a=b\"> <c>\n"},
    {"NoValue", "[A]\nK =\nL = \t\n", "1 [A]\n2 <K> <>\n3 <L> <>\n"},
    {"NoEquals", "[A]\nK\nL , M\n", "1 [A]\n2 <K> <>\n3 <L , M> <>\n"},
    {"NoEqualsOutsideQuotes", "[A]\n\"K = V\"\n", "1 [A]\n2 <\"K = V\"> <>\n"},
    {"QuotesArePassedOn", "[A]\nK = \"\"\nL = a\"b\"c\n", "1 [A]\n2 <K> <\"\">\n3 <L> <a\"b\"c>\n"},
    {"BracketLaterIsText", "[A]\nK[1] = [2]\n", "1 [A]\n2 <K[1]> <[2]>\n"},
    {"BackslashWithinIsText", "[A]\nFILE = dir\\x.rux\n", "1 [A]\n2 <FILE> <dir\\x.rux>\n"},
    {"NoKey", "[A]\n= 5\nK=V\n =\n",
     "1 [A]\n3 <K> <V>\n! 2 Entry has no key.\n! 4 Entry has no key.\n"},
    {"EmptyQuotesAreAKey", "[A]\n\"\" = 5\n", "1 [A]\n2 <\"\"> <5>\n"},
};
INSTANTIATE_TEST_SUITE_P(Items, ScannerTest, testing::ValuesIn(kItems), RowName);

const Row kCommas[] = {
    {"BlanksAfter", "[A]\nSENSORS = 1, 2\n", "1 [A]\n2 <SENSORS> <1,2>\n"},
    {"BlanksBeforeAndAfter", "[A]\nK = a \t,\t b ,c\n", "1 [A]\n2 <K> <a,b,c>\n"},
    {"BlanksOfAnElementAreKept", "[A]\nK = a b , c d\n", "1 [A]\n2 <K> <a b,c d>\n"},
    {"EmptyElements", "[A]\nK = a , , b\n", "1 [A]\n2 <K> <a,,b>\n"},
    {"AtTheEnds", "[A]\nK = , a , # b\n", "1 [A]\n2 <K> <,a,>\n"},
    {"Alone", "[A]\nK = ,\nL = , ,\n", "1 [A]\n2 <K> <,>\n3 <L> <,,>\n"},
    {"InQuotesNothingIsDropped", "[A]\nK = \"a , b\" , \" c ,d \"\n",
     "1 [A]\n2 <K> <\"a , b\",\" c ,d \">\n"},
    {"AroundTextWithQuotes", "[A]\nK = x \"a , b\" y , z\n", "1 [A]\n2 <K> <x \"a , b\" y,z>\n"},
    {"InAKeyNothingIsDropped", "[A]\na , b = c\n", "1 [A]\n2 <a , b> <c>\n"},
};
INSTANTIATE_TEST_SUITE_P(Commas, ScannerTest, testing::ValuesIn(kCommas), RowName);

const Row kComments[] = {
    {"WholeLines", "# a\n; b\n \t# c\n[A]\n#\n;K=V\n", "4 [A]\n"},
    {"AfterABlank", "[A]\nK = V # c\nL = V\t; c\n", "1 [A]\n2 <K> <V>\n3 <L> <V>\n"},
    {"NotAfterText", "[A]\nK = a#b;c\n", "1 [A]\n2 <K> <a#b;c>\n"},
    {"NotRightAfterEquals", "[A]\nK =# V\n", "1 [A]\n2 <K> <# V>\n"},
    {"InsteadOfAValue", "[A]\nK = # V\n", "1 [A]\n2 <K> <>\n"},
    {"BeforeEquals", "[A]\nK # = V\n", "1 [A]\n2 <K> <>\n"},
    {"NotInQuotes", "[A]\nK = \"x # y\"\n", "1 [A]\n2 <K> <\"x # y\">\n"},
    {"AfterQuotes", "[A]\nK = \"x # y\" # z\n", "1 [A]\n2 <K> <\"x # y\">\n"},
    {"NotRightAfterQuotes", "[A]\nK = \"x\"#y\n", "1 [A]\n2 <K> <\"x\"#y>\n"},
    {"QuoteInAComment", "[A]\n# \"x\nK = V # \"y\n", "1 [A]\n3 <K> <V>\n"},
};
INSTANTIATE_TEST_SUITE_P(Comments, ScannerTest, testing::ValuesIn(kComments), RowName);

const Row kJoins[] = {
    {"NothingIsInserted", "[A]\nK = a\\\nb\n", "1 [A]\n2 <K> <ab>\n"},
    {"BlanksAreKept", "[A]\nK = a \\\n b\n", "1 [A]\n2 <K> <a  b>\n"},
    {"CarriageReturn", "[A]\r\nK = a\\\r\nb\r\n", "1 [A]\n2 <K> <ab>\n"},
    {"List", "[A]\nK = 1, 2, \\\n    3, \\\n    4\nL = 5\n", "1 [A]\n2 <K> <1,2,3,4>\n5 <L> <5>\n"},
    {"EmptyLine", "[A]\nK = a\\\n\nL = b\n", "1 [A]\n2 <K> <a>\n4 <L> <b>\n"},
    {"OnlyTheLastBackslashJoins", "[A]\nK = a\\\\\n\nL = b\n", "1 [A]\n2 <K> <a\\>\n4 <L> <b>\n"},
    {"BackslashAloneOnALine", "[A]\nK = a\\\n\\\nb\n", "1 [A]\n2 <K> <ab>\n"},
    {"BackslashBeforeABlankIsText", "[A]\nK = a\\ \nL\n", "1 [A]\n2 <K> <a\\>\n3 <L> <>\n"},
    {"BackslashAtTheEndIsText", "[A]\nK = a\\", "1 [A]\n2 <K> <a\\>\n"},
    {"BackslashOnTheLastLineIsText", "[A]\nK = a\\\n", "1 [A]\n2 <K> <a\\>\n"},
    {"Header", "[A\\\nB]\nK=V\n", "1 [AB]\n3 <K> <V>\n"},
    {"BeforeAHeader", "\\\n[A]\n", "1 [A]\n"},
    {"Comment", "[A]\n# c \\\nK = V\nL = W\n", "1 [A]\n4 <L> <W>\n"},
    {"Quotes", "[A]\nK = \"a , \\\n b # c\" # d\n", "1 [A]\n2 <K> <\"a ,  b # c\">\n"},
    {"JoinedTextStartsAComment", "[A]\nK = a \\\n# b\n", "1 [A]\n2 <K> <a>\n"},
    {"JoinedTextStartsNoComment", "[A]\nK = a\\\n# b\n", "1 [A]\n2 <K> <a# b>\n"},
    {"JoinedKey", "[A]\nKE\\\nY = V\n", "1 [A]\n2 <KEY> <V>\n"},
    {"ProblemHasTheFirstLine", "[A]\n\\\n\\\n= 5\nK\n", "1 [A]\n5 <K> <>\n! 2 Entry has no key.\n"},
};
INSTANTIATE_TEST_SUITE_P(Joins, ScannerTest, testing::ValuesIn(kJoins), RowName);

const Row kProblems[] = {
    {"TextBeforeTheFirstSection", "# c\n\nx\ny = 1\n[A]\nK=V\n",
     "5 [A]\n6 <K> <V>\n! 3 Text before the first section is ignored.\n"},
    {"NoSectionAtAll", "x\n= 1\n", "! 1 Text before the first section is ignored.\n"},
    {"SecondByteOrderMark", "\xEF\xBB\xBF\xEF\xBB\xBF[A]\n[B]\n",
     "2 [B]\n! 1 Text before the first section is ignored.\n"},
    {"QuoteTakesTheRestOfTheLine", "[A]\nK = \"a , b # c ; d = \"\"e , \t\nL = 1\n",
     "1 [A]\n2 <K> <\"a , b # c ; d = \"\"e ,>\n3 <L> <1>\n! 2 Double quote is not closed.\n"},
    {"QuoteInTheKeyTakesTheEquals", "[A]\nK \"= V\n",
     "1 [A]\n2 <K \"= V> <>\n! 2 Double quote is not closed.\n"},
    {"SecondQuoteIsNotClosed", "[A]\nK = \"a\" , \"b , c\n",
     "1 [A]\n2 <K> <\"a\",\"b , c>\n! 2 Double quote is not closed.\n"},
    {"QuoteAlone", "[A]\n\"\n", "1 [A]\n2 <\"> <>\n! 2 Double quote is not closed.\n"},
    {"QuoteOfTheNextLineIsItsOwn", "[A]\nK = \"a\nL = b\"\n",
     "1 [A]\n2 <K> <\"a>\n3 <L> <b\">\n"
     "! 2 Double quote is not closed.\n"
     "! 3 Double quote is not closed.\n"},
    {"NulBytesAreDropped", "[A]\nK\0 = V\0\0W\nL\n"s,
     "1 [A]\n2 <K> <VW>\n3 <L> <>\n! 2 NUL bytes are ignored.\n"},
    {"NulBytesOfEachLine", "[\0A]\0\nK\0\0\n"s,
     "1 [A]\n2 <K> <>\n! 1 NUL bytes are ignored.\n! 2 NUL bytes are ignored.\n"},
    {"NulByteAlone", "[A]\n\0\nK"s, "1 [A]\n3 <K> <>\n! 2 NUL bytes are ignored.\n"},
    {"NulByteBeforeTheLineEnd", "[A]\nK = V\0\r\n"s,
     "1 [A]\n2 <K> <V>\n! 2 NUL bytes are ignored.\n"},
    {"NulByteInAComment", "# \0\n[A]\n"s, "2 [A]\n! 1 NUL bytes are ignored.\n"},
    {"NulByteInJoinedLines", "[A]\nK = \\\n\0V\\\n\0W\n"s,
     "1 [A]\n2 <K> <VW>\n! 2 NUL bytes are ignored.\n"},
    {"AllOfALineAreTold", "[\0A \"b\n"s,
     "1 [A\"b]\n"
     "! 1 NUL bytes are ignored.\n"
     "! 1 Double quote is not closed.\n"
     "! 1 Section header is not closed.\n"},
};
INSTANTIATE_TEST_SUITE_P(Problems, ScannerTest, testing::ValuesIn(kProblems), RowName);

}  // namespace
