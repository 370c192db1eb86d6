#include "ruxcomp/language/parts.h"

#include <gtest/gtest.h>

namespace {

using ruxcomp::language::SplitItems;

using Parts = std::vector<std::string>;

struct SplitRow {
  std::string text;
  Parts parts;
};

TEST(SplitTest, Rows) {
  const SplitRow rows[] = {
      {"", {}},
      {"a", {"a"}},
      {"a,b", {"a", "b"}},
      {"a,,b", {"a", "", "b"}},
      {"a,", {"a", ""}},
      {",a", {"", "a"}},
      {",", {"", ""}},
      {",,", {"", "", ""}},
      {" a , b ", {" a ", " b "}},
      // Quotes hide commas and go; what is beside them goes too.
      {"\"a\"", {"a"}},
      {"\"\"", {""}},
      {"\"a,b\"", {"a,b"}},
      {"\"a,b\",c", {"a,b", "c"}},
      {"a,\"b,c\",d", {"a", "b,c", "d"}},
      {"x\"a\"y", {"a"}},
      {"x\"a\"y,b", {"a", "b"}},
      {"\"a\"\"b\"", {"a"}},
      {"\"a\",", {"a", ""}},
      {"\" a \"", {" a "}},
      // A second pair of quotes in one part hides nothing.
      {"\"a\"x\"b,c\"", {"a", ""}},
      {"\"a\"x\"b,c\",d", {"a", ",d"}},
      // A quote that does not end takes the rest.
      {"\"a,b", {"a,b"}},
      {"a,\"b,c,", {"a", "b,c,"}},
      {"\"", {""}},
      {"a\"", {""}},
      {"\"a\",\"b,c", {"a", "b,c"}},
      // A quote after the comma belongs to the next part.
      {"a,b\"c\"", {"a", "c"}},
  };
  for (const SplitRow& row : rows) {
    SCOPED_TRACE(row.text);
    Parts parts;
    SplitItems(row.text, parts);
    EXPECT_EQ(parts, row.parts);
  }
}

TEST(SplitTest, AppendsToWhatIsThere) {
  Parts parts = {"x"};
  SplitItems("a,b", parts);
  EXPECT_EQ(parts, (Parts{"x", "a", "b"}));
}

}  // namespace
