// Where a comment that allows a warning is written.
#include "assistance/allowing.h"

#include <gmock/gmock.h>

#include <string>

#include "tests/assistance/marked.h"

namespace {

using namespace rux::assistance;
using rux::sources::AllowScope;

// The script with the comment; "-" where there can be none.
std::string Allowed(std::string script, AllowScope scope) {
  const Marked marked(script);
  const Place at = marked.place();
  const auto edit = AllowAt(*at.index.files()[at.file], at.offset, "some-id", scope);
  if (!edit) return "-";
  script.erase(script.find('^'), 1);
  return script.insert(edit->offset, edit->text);
}

TEST(AllowingTest, OfALineIsAtItsEnd) {
  EXPECT_EQ(Allowed("[DEFINE]\nA = 1, ^2\nB = 3\n", AllowScope::kLine),
            "[DEFINE]\nA = 1, 2  # rux: allow some-id\nB = 3\n");
  EXPECT_EQ(Allowed("[DEFINE]\r\nA = 1, ^2 \r\n", AllowScope::kLine),
            "[DEFINE]\r\nA = 1, 2  # rux: allow some-id \r\n");
  EXPECT_EQ(Allowed("[DEFINE]\nA = 1, \\\n  ^2", AllowScope::kLine),
            "[DEFINE]\nA = 1, \\\n  2  # rux: allow some-id");
}

TEST(AllowingTest, OfALineComesBeforeWhatAnotherCommentSays) {
  EXPECT_EQ(Allowed("[DEFINE]\nA = 1, ^2 # why\n", AllowScope::kLine),
            "[DEFINE]\nA = 1, 2 # rux: allow some-id  why\n");
  EXPECT_EQ(Allowed("[DEFINE]\nA = \"#\", ^2 ; why\n", AllowScope::kLine),
            "[DEFINE]\nA = \"#\", 2 ; rux: allow some-id  why\n");
}

TEST(AllowingTest, JoinsACommentThatAllowsSomething) {
  EXPECT_EQ(Allowed("[DEFINE]\nA = 1, ^2 # rux: allow other-id  why\n", AllowScope::kLine),
            "[DEFINE]\nA = 1, 2 # rux: allow other-id,some-id  why\n");
  EXPECT_EQ(Allowed("# rux: allow other-id\n\n[DEFINE]\nA = 1, ^2\n", AllowScope::kFile),
            "# rux: allow other-id,some-id\n\n[DEFINE]\nA = 1, 2\n");
}

TEST(AllowingTest, OfASectionIsAtItsHeader) {
  EXPECT_EQ(Allowed("[DEFINE]\nA = 1\n\n# two\n[DEFINE]\nB = 1, ^2\n", AllowScope::kSection),
            "[DEFINE]\nA = 1\n\n# two\n[DEFINE]\n# rux: allow some-id\nB = 1, 2\n");
  EXPECT_EQ(Allowed("[DEFINE]\nB = 1, ^2\n", AllowScope::kSection),
            "[DEFINE]\n# rux: allow some-id\nB = 1, 2\n");
}

TEST(AllowingTest, OfAFileIsAtTheTop) {
  EXPECT_EQ(Allowed("# one\n[DEFINE]\nA = 1, ^2\n", AllowScope::kFile),
            "# rux: allow some-id\n\n# one\n[DEFINE]\nA = 1, 2\n");
}

TEST(AllowingTest, IsNotOffered) {
  EXPECT_EQ(Allowed("^", AllowScope::kLine), "-");
  EXPECT_EQ(Allowed("# no section^\n", AllowScope::kSection), "-");
}

}  // namespace
