// Files that are mapped, and what becomes of a process that looks at one that was shortened.
#include <unistd.h>

#include <string>

#include "compiled/compiled_file.h"
#include "ruxcomp/file/kept_bytes.h"
#include "tests/support/temp_folder.h"

namespace {

using rux::compiled::KeptBytes;
using rux::compiled::MapWholeFile;

class MappedFileTest : public testing::Test {
 protected:
  std::string Written(const std::string& content) {
    folder_.Write("file", content);
    return folder_ / "file";
  }

  const TempFolder folder_;
};

TEST_F(MappedFileTest, HoldsWhatTheFileHolds) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, rux::compiled::kLeastMapped - 1,
                                 rux::compiled::kLeastMapped, std::size_t{300000}}) {
    SCOPED_TRACE(size);
    std::string content(size, 'x');
    if (size > 0) content.back() = 'y';
    KeptBytes bytes;
    MapWholeFile(Written(content), bytes);
    EXPECT_EQ(bytes.view(), content);
  }
}

TEST_F(MappedFileTest, OneThatIsShortenedEndsTheProcessWithAReason) {
  const std::string path = Written(std::string(300000, 'x'));
  const auto look = [&] {
    KeptBytes bytes;
    MapWholeFile(path, bytes);
    if (truncate(path.c_str(), 0) != 0) _exit(9);
    _exit(bytes.view().back() == 'x' ? 10 : 11);
  };
  EXPECT_EXIT(look(), testing::ExitedWithCode(3),
              "^rux: error: a file was truncated while it was being read\n$");
}

TEST_F(MappedFileTest, ASmallOneMayBeShortened) {
  const std::string path = Written("content");
  KeptBytes bytes;
  MapWholeFile(path, bytes);
  ASSERT_EQ(truncate(path.c_str(), 0), 0);
  EXPECT_EQ(bytes.view(), "content");
}

}  // namespace
