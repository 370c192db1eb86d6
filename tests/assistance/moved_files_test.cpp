// Files that are included under new names.
#include "assistance/moved_files.h"

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "assistance/edit.h"
#include "assistance/place.h"
#include "sources/source_file.h"
#include "tests/assistance/marked.h"
#include "tests/generators/source_files.h"
#include "tests/index/machine.h"

namespace {

using namespace rux::assistance;
using testing::ElementsAre;
using testing::IsEmpty;

// The texts of the files that change, after some have moved.
std::vector<std::string> AfterMoves(const SourceFiles& files,
                                    const std::map<std::string, std::string>& moves) {
  const Machine machine(files);
  const std::vector<Edit> edits = EditsForMoves(machine.index(), [&](const std::string& path) {
    const auto found = moves.find(path);
    return found == moves.end() ? path : found->second;
  });
  std::vector<std::string> texts;
  for (Id file = 0; file < machine.index().files().size(); ++file) {
    const rux::sources::SourceFile& source = *machine.index().files()[file];
    const std::string text = Edited(machine.index(), file, edits);
    if (text != source.text()) texts.push_back(source.path() + ": " + text);
  }
  return texts;
}

std::string Including(const std::string& path) { return "[INCLUDE]\nFILE = " + path + "\n"; }

TEST(MovedFilesTest, AreIncludedUnderTheirNewNames) {
  const SourceFiles files = {
      {"main.rux", Including("a.rux") + Including("b.rux")}, {"a.rux", ""}, {"b.rux", ""}};
  EXPECT_THAT(AfterMoves(files, {{"a.rux", "c.rux"}}),
              ElementsAre("main.rux: " + Including("c.rux") + Including("b.rux")));
  EXPECT_THAT(AfterMoves(files, {{"a.rux", "parts/a.rux"}}),
              ElementsAre("main.rux: " + Including("parts\\a.rux") + Including("b.rux")));
  EXPECT_THAT(AfterMoves(files, {{"a.rux", "x, y.rux"}}),
              ElementsAre("main.rux: " + Including("\"x, y.rux\"") + Including("b.rux")));
  EXPECT_THAT(AfterMoves(files, {{"c.rux", "d.rux"}}), IsEmpty());
}

TEST(MovedFilesTest, KeepTheirSeparators) {
  EXPECT_THAT(AfterMoves({{"main.rux", Including("parts/a.rux")}, {"parts/a.rux", ""}},
                         {{"parts/a.rux", "more/a.rux"}}),
              ElementsAre("main.rux: " + Including("more/a.rux")));
  EXPECT_THAT(AfterMoves({{"main.rux", Including("parts\\a.rux")}, {"parts/a.rux", ""}},
                         {{"parts/a.rux", "more/a.rux"}}),
              ElementsAre("main.rux: " + Including("more\\a.rux")));
}

TEST(MovedFilesTest, IncludeTheSameFilesFromElsewhere) {
  const SourceFiles files = {{"main.rux", Including("parts\\a.rux")},
                             {"parts/a.rux", Including("b.rux")},
                             {"parts/b.rux", ""}};
  EXPECT_THAT(
      AfterMoves(files, {{"parts/a.rux", "a.rux"}}),
      ElementsAre("main.rux: " + Including("a.rux"), "parts/a.rux: " + Including("parts\\b.rux")));
  // Those that move together still see each other.
  EXPECT_THAT(AfterMoves(files, {{"parts/a.rux", "more/a.rux"}, {"parts/b.rux", "more/b.rux"}}),
              ElementsAre("main.rux: " + Including("more\\a.rux")));
}

TEST(MovedFilesTest, ThatCannotBeWrittenStay) {
  EXPECT_THAT(
      AfterMoves({{"main.rux", Including("a.rux")}, {"a.rux", ""}}, {{"a.rux", "say \"a\".rux"}}),
      IsEmpty());
}

}  // namespace
