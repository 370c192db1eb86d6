// Where an object comes from: the file table, base names and folders.
#include "frontend/obj.h"

#include <gtest/gtest.h>

using namespace ruxcomp::core;

namespace {

TEST(ObjTest, NewObjectHasNothing) {
  const CRUXObj object;
  EXPECT_EQ(object.identifier, 0u);
  EXPECT_EQ(object.notation, 0u);
  EXPECT_EQ(object.line, 0u);
  EXPECT_EQ(object.name, "");
  EXPECT_EQ(object.fileIndex, 0u);
}

struct PathRow {
  const char* path;
  const char* base;
  const char* folder;
};

TEST(ObjTest, GetFileSplitsAtTheLastBackslash) {
  for (const PathRow& row : {PathRow{"a\\b\\c.txt", "c.txt", "a\\b\\"},
                             {"c.txt", "c.txt", ""},
                             {"a/b/c.txt", "a/b/c.txt", ""},
                             {"a\\b/c.txt", "b/c.txt", "a\\"},
                             {"\\c.txt", "c.txt", "\\"},
                             {"a\\", "", "a\\"},
                             {"", "", ""}}) {
    SCOPED_TRACE(row.path);
    CRUXObj object;
    object.SetFile(row.path);
    EXPECT_EQ(object.GetFile(0), row.base);
    EXPECT_EQ(object.GetFile(1), row.folder);
    EXPECT_EQ(object.GetFile(2), row.folder);
    EXPECT_EQ(object.GetFile(-1), row.folder);
  }
}

TEST(ObjTest, ObjectsOfOneFileShareItsIndex) {
  CRUXObj one, other, another, again;
  one.SetFile("a.rux");
  other.SetFile("b.rux");
  another.SetFile("A.rux");
  again.SetFile("b.rux");
  EXPECT_EQ(one.fileIndex, 0u);
  EXPECT_EQ(other.fileIndex, 1u);
  EXPECT_EQ(another.fileIndex, 2u);
  EXPECT_EQ(again.fileIndex, 1u);
  EXPECT_EQ(CRUXObj::m_svstrIncFiles, (std::vector<std::string>{"a.rux", "b.rux", "A.rux"}));
}

TEST(ObjTest, SetFileCountsUpFromThePresentIndex) {
  CRUXObj one, other;
  one.SetFile("a.rux");
  other.SetFile("b.rux");
  other.SetFile("b.rux");
  EXPECT_EQ(other.fileIndex, 2u);
}

TEST(ObjTest, UnknownFileHasNoName) {
  CRUXObj object;
  EXPECT_EQ(object.GetFile(0), "");
  EXPECT_EQ(object.GetFile(1), "");
  object.SetFile("a\\b.rux");
  object.fileIndex = 1;
  EXPECT_EQ(object.GetFile(0), "");
  EXPECT_EQ(object.GetFile(1), "");
}

TEST(ObjTest, ObjectWithoutAPlaceShowsTheFirstFile) {
  CRUXObj first;
  first.SetFile("a\\b.rux");
  EXPECT_EQ(CRUXObj().GetFile(0), "b.rux");
}

}  // namespace
