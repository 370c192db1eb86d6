// Verifying a meta file, and models that are made of sound files only.
#include "ruxcomp/verify.h"

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "ruxcomp/language/words.h"
#include "ruxcomp/model.h"
#include "tests/api/meta_bytes.h"
#include "tests/damage/memory_file.h"
#include "tests/damage/samples.h"
#include "tests/read_model/same_answers.h"

namespace {

using ruxcomp::Fault;
using ruxcomp::FaultText;
using ruxcomp::Model;
using ruxcomp::Value;

class VerifyTest : public MetaTest {
 protected:
  // Of a file that Model::LoadVerified refuses.
  static std::string ReasonAgainst(const std::string& path) {
    Fault fault;
    EXPECT_FALSE(Model::LoadVerified(path, &fault));
    return FaultText(fault);
  }

  const std::string sample_ = MetaSample();
};

// The last slot of the directory is that of the cells, which follow a class and a length.
std::size_t FirstCellOf(const std::string& file) {
  return ruxcomp::language::LoadWord(&file[164]) + 8;
}

TEST_F(VerifyTest, SoundFilesHaveNoFault) {
  EXPECT_FALSE(ruxcomp::Verify(sample_));
  const std::optional<Model> model = Model::OfVerified(sample_);
  ASSERT_TRUE(model);
  ASSERT_EQ(Load(sample_), 1u);
  ExpectSameAnswers(*model);
  const std::optional<Model> loaded = Model::LoadVerified(Path("hand.meta"));
  ASSERT_TRUE(loaded);
  ExpectSameAnswers(*loaded);
}

TEST_F(VerifyTest, NoFileOfTheLibraryIsTouched) {
  ASSERT_EQ(Load(sample_), 1u);
  gcSetLastError(77);
  ASSERT_TRUE(Model::LoadVerified(Path("hand.meta")));
  ASSERT_FALSE(Model::LoadVerified(Path("none.meta")));
  EXPECT_EQ(gcGetLastError(), 77u);
  EXPECT_EQ(gcGetSectCount(RUX_SECT_SENSOR), 1u);
}

// From every offset on, whatever is there: header, directory, sections, padding and every table.
// Only the cells of tables may be zeros.
TEST_F(VerifyTest, FilesWhoseEndBecameZerosAreRefused) {
  const std::size_t first_cell = FirstCellOf(sample_);
  ASSERT_EQ(first_cell + RUX_TABLE_CELLS, sample_.size());
  const MemoryFile file;
  std::size_t loaded_by_the_library = 0;
  for (std::size_t from = 0; from < sample_.size(); ++from) {
    SCOPED_TRACE("zeros from " + std::to_string(from));
    std::string bytes = sample_;
    bytes.replace(from, std::string::npos, sample_.size() - from, '\0');
    const bool is_hit = bytes.compare(0, first_cell, sample_, 0, first_cell) != 0;
    EXPECT_EQ(ruxcomp::Verify(bytes).has_value(), is_hit);
    EXPECT_EQ(Model::OfVerified(bytes).has_value(), !is_hit);
    file.Fill(bytes);
    if (is_hit) loaded_by_the_library += gcInit(file.path());
    gcUnInit();
  }
  EXPECT_GT(loaded_by_the_library, 1000u) << "gcInit skips blocks of zeros";
}

TEST_F(VerifyTest, FilesThatEndEarlyAreRefused) {
  for (std::size_t size = 0; size < sample_.size(); ++size) {
    EXPECT_TRUE(ruxcomp::Verify(sample_.substr(0, size))) << size;
  }
}

TEST_F(VerifyTest, TheFirstFaultInTheFileIsTheOneThatIsReported) {
  std::string bytes = sample_;
  bytes[FirstCellOf(bytes) - 4] = 1;  // the length of the cells
  bytes[16] = 2;                      // the version
  const std::optional<Fault> fault = ruxcomp::Verify(bytes);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->offset, 16u);
  EXPECT_EQ(fault->record, "header");
  EXPECT_EQ(fault->field, "version");
  EXPECT_EQ(fault->reason, "expected 0x01000000, found 0x01000002");
  EXPECT_EQ(FaultText(*fault),
            "offset 0x10, header, version: expected 0x01000000, found 0x01000002");
}

TEST_F(VerifyTest, ReasonsAreGivenForEveryFileThatIsNotLoaded) {
  EXPECT_EQ(ReasonAgainst(Path("none.meta")),
            "offset 0x0, file, path: it cannot be opened: No such file or directory");
  EXPECT_EQ(ReasonAgainst(folder()), "offset 0x0, file, path: it is not a regular file");
  Write("empty.meta", "");
  EXPECT_EQ(ReasonAgainst(Path("empty.meta")),
            "offset 0x0, header, magic: bytes needed: 15, left: 0");
  Write("debug.metad", DebugMetaSample());
  EXPECT_EQ(ReasonAgainst(Path("debug.metad")),
            "offset 0x0, header, magic: this is not a meta file");
  EXPECT_FALSE(Model::LoadVerified(Path("none.meta"))) << "the reason need not be asked for";
}

TEST_F(VerifyTest, NothingIsWaitedFor) {
  ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
  EXPECT_EQ(ReasonAgainst(Path("fifo")), "offset 0x0, file, path: it is not a regular file");
}

// To open a socket fails, with another reason.
TEST_F(VerifyTest, WhatIsNoRegularFileIsNotOpened) {
  ASSERT_EQ(mknod(Path("socket").c_str(), S_IFSOCK | 0600, 0), 0);
  EXPECT_EQ(ReasonAgainst(Path("socket")), "offset 0x0, file, path: it is not a regular file");
}

TEST_F(VerifyTest, FilesThatAreTooLargeAreNotRead) {
  Write("large.meta", sample_);
  ASSERT_EQ(truncate(Path("large.meta").c_str(), (256 << 20) + 1), 0);
  EXPECT_EQ(ReasonAgainst(Path("large.meta")), "offset 0x0, file, path: it is larger than 256 MiB");
}

TEST_F(VerifyTest, TheReasonOfASoundFileIsLeftAlone) {
  Fault fault{7, "record", "field", "reason"};
  Write("sound.meta", sample_);
  ASSERT_TRUE(Model::LoadVerified(Path("sound.meta"), &fault));
  ASSERT_TRUE(Model::OfVerified(sample_, &fault));
  EXPECT_EQ(FaultText(fault), "offset 0x7, record, field: reason");
}

// THRESHOLD_FL = -20 and the like, as the compiler writes them.
TEST_F(VerifyTest, NumbersMayBeReadWithASign) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(Value(0x11000000, 20u).signed_number(), 20);
  EXPECT_EQ(Value(0x11000000, 0xFFFFFFECu).signed_number(), -20);
  EXPECT_EQ(Value(0x11000000, 0x80000000u).signed_number(), kLeast);
  EXPECT_EQ(Value(0x11000000, 0x7FFFFFFFu).signed_number(), 0x7FFFFFFF);
  EXPECT_EQ(Value(0x11000000, 0xFFFFFFFFu).signed_number(), 0) << "-1 is nothing";
  EXPECT_EQ(Value(0x12000000, "20").signed_number(), 0);
  EXPECT_EQ(Value().signed_number(), 0);
}

}  // namespace
