// Opening meta files where they are: mapped, at any address, damaged, and with odd lengths.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "ruxcomp/model.h"
#include "tests/api/meta_bytes.h"
#include "tests/damage/samples.h"
#include "tests/read_model/same_answers.h"

namespace {

using ruxcomp::Entry;
using ruxcomp::Fault;
using ruxcomp::FaultText;
using ruxcomp::Model;
using ruxcomp::Section;
using ruxcomp::Value;

constexpr std::uint32_t kProperty = RUX_CLASS_Property, kString = RUX_CLASS_String;

class OpenTest : public MetaTest {
 protected:
  bool IsMapped(const std::string& name) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
      if (line.find(Path(name)) != std::string::npos) return true;
    }
    return false;
  }
};

// A file of the layout that compilers write: all blocks in the order of the directory. Strings and
// properties are given, all other tables have what every table has.
std::string Sound(const std::vector<tagGCENTRY>& properties, const std::string& names,
                  std::uint32_t length, const std::vector<std::string>& strings) {
  MetaBytes bytes;
  bytes.Section(RUX_SECT_PROPERTY, properties);
  bytes.Block(kProperty, length, names).Strings(RUX_CLASS_Global, {});
  bytes.Strings(RUX_CLASS_Value, {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT"});
  bytes.Strings(RUX_CLASS_Repeater, {}).Numbers({}).Strings(kString, strings);
  bytes.Strings(RUX_CLASS_Group, {"0"}).Strings(RUX_CLASS_Action, {});
  return bytes.Strings(RUX_CLASS_TableName, {}).Block(RUX_CLASS_TableData, "").str();
}

// So many properties, each with a string of its own.
std::string ManyProperties(std::uint32_t count) {
  std::vector<tagGCENTRY> entries;
  std::vector<std::string> strings;
  std::string names;
  for (std::uint32_t i = 0; i < count; ++i) {
    entries.push_back({kProperty + i, {kString + i}});
    strings.push_back("text " + std::to_string(i));
    names += "P" + std::to_string(i) + '\0';
  }
  return Sound(entries, names, static_cast<std::uint32_t>(names.size()), strings);
}

TEST_F(OpenTest, LargeFilesAreMappedAndSmallOnesAreRead) {
  Write("small.meta", ManyProperties(10));
  Write("large.meta", ManyProperties(10000));
  {
    const std::optional<Model> small = Model::Open(Path("small.meta"));
    const std::optional<Model> large = Model::Open(Path("large.meta"));
    ASSERT_TRUE(small && large);
    EXPECT_FALSE(IsMapped("small.meta"));
    EXPECT_TRUE(IsMapped("large.meta"));
    const Section properties = large->sections(RUX_SECT_PROPERTY)[0];
    EXPECT_EQ(properties.entries().size(), 10000u);
    EXPECT_EQ(properties.entry_named("P9999").value().text(), "text 9999");
    const std::optional<Model> read = Model::LoadVerified(Path("large.meta"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->sections()[0].entry_named("P1").value().text(), "text 1");
  }
  EXPECT_FALSE(IsMapped("large.meta"));
}

TEST_F(OpenTest, AFileThatIsReplacedIsKept) {
  Write("board.meta", ManyProperties(10000));
  const std::optional<Model> model = Model::Open(Path("board.meta"));
  ASSERT_TRUE(model);
  Write("next.meta", ManyProperties(1));
  ASSERT_EQ(std::rename(Path("next.meta").c_str(), Path("board.meta").c_str()), 0);
  EXPECT_EQ(model->sections()[0].entry_named("P9999").value().text(), "text 9999");
  const std::optional<Model> next = Model::Open(Path("board.meta"));
  ASSERT_TRUE(next);
  EXPECT_EQ(next->sections()[0].entries().size(), 1u);
}

TEST_F(OpenTest, BytesMayBeAtAnyAddress) {
  const std::string sample = MetaSample();
  ASSERT_EQ(Load(sample), 1u);
  for (std::size_t offset = 0; offset < 4; ++offset) {
    SCOPED_TRACE(offset);
    const std::string place = std::string(offset, ' ') + sample;
    const std::string_view bytes = std::string_view(place).substr(offset);
    const std::optional<Model> model = Model::OpenBytes(bytes);
    ASSERT_TRUE(model);
    ExpectSameAnswers(*model);
    const char* const name = model->sections(RUX_SECT_SENSOR)[0].name().data();
    EXPECT_TRUE(name > bytes.data() && name < bytes.data() + bytes.size()) << "it is not copied";
  }
}

TEST_F(OpenTest, EachWayGivesTheSameReason) {
  std::string bytes = ManyProperties(10000);
  bytes[256] = 2;  // so many sections
  Write("damaged.meta", bytes);
  const std::string reason =
      "offset 0x1D5CC, sections, section 1, identifier: no such kind: 0x00000000";
  Fault fault;
  EXPECT_FALSE(Model::Open(Path("damaged.meta"), &fault));
  EXPECT_EQ(FaultText(fault), reason);
  fault = {};
  EXPECT_FALSE(Model::OpenBytes(bytes, &fault));
  EXPECT_EQ(FaultText(fault), reason);
  EXPECT_FALSE(Model::OpenBytes(bytes)) << "the reason need not be asked for";
  EXPECT_FALSE(Model::Open(Path("none.meta"), &fault));
  EXPECT_EQ(FaultText(fault),
            "offset 0x0, file, path: it cannot be opened: No such file or directory");
  EXPECT_FALSE(Model::Open(folder(), &fault));
  EXPECT_EQ(FaultText(fault), "offset 0x0, file, path: it is not a regular file");
}

TEST_F(OpenTest, TellsVersionAndCreationTime) {
  std::string bytes = ManyProperties(1);
  bytes.replace(20, 4, "\x44\x33\x22\x11");
  const std::optional<Model> model = Model::OpenBytes(bytes);
  ASSERT_TRUE(model);
  EXPECT_EQ(model->info().version, 0x01000000u);
  EXPECT_EQ(model->info().creationTime, 0x11223344u);
  EXPECT_EQ(Model().info().version, 0u);
}

// Three indices have no name: a stated length that counts names only ends within the last one.
TEST_F(OpenTest, ANameThatTheStatedLengthCutsEndsWithAZero) {
  const std::string names("A\0\0\0\0LAST\0", 10);
  const std::string bytes = Sound({{kProperty + 4, {kString}}}, names,
                                  static_cast<std::uint32_t>(names.size()) - 3, {"text"});
  ASSERT_FALSE(ruxcomp::Verify(bytes)) << FaultText(*ruxcomp::Verify(bytes));
  const std::optional<Model> model = Model::OpenBytes(bytes);
  ASSERT_TRUE(model);
  const Entry entry = model->sections()[0].entries()[0];
  EXPECT_EQ(entry.name(), "LA");
  EXPECT_STREQ(entry.name().data(), "LA");
  EXPECT_EQ(entry.value().text(), "text");
  ASSERT_EQ(Load(bytes), 1u);
  ExpectSameAnswers(*model);
}

TEST_F(OpenTest, EntriesOfLargeSectionsHaveRandomAccess) {
  const std::optional<Model> model = Model::OfVerified(ManyProperties(2000));
  ASSERT_TRUE(model);
  const ruxcomp::Entries entries = model->sections()[0].entries();
  std::vector<Entry> in_order;
  for (const Entry entry : entries) in_order.push_back(entry);
  ASSERT_EQ(in_order.size(), 2000u);
  for (std::size_t i = 0; i < 2000; ++i) EXPECT_EQ(entries[i], in_order[i]);
  EXPECT_FALSE(entries[2000]);
  std::reverse(in_order.begin(), in_order.end());
  std::size_t n = 0;
  for (auto at = entries.end(); at != entries.begin();) EXPECT_EQ(*--at, in_order[n++]);
  EXPECT_EQ(n, 2000u);
}

// The first questions, of many threads at once.
TEST_F(OpenTest, ThreadsMayMakeTheIndicesTogether) {
  constexpr std::uint32_t kCount = 3000;
  const std::optional<Model> model = Model::OfVerified(ManyProperties(kCount));
  ASSERT_TRUE(model);
  const Section properties = model->sections()[0];
  std::vector<std::thread> threads;
  std::vector<std::uint32_t> found(4);
  for (std::uint32_t& own : found) {
    threads.emplace_back([&] {
      for (std::uint32_t i = 0; i < kCount; ++i) {
        const std::string name = "P" + std::to_string(i);
        const bool is_same = model->section_named(RUX_SECT_PROPERTY, name) == properties &&
                             properties.entry_named(name) == properties.entry(kProperty + i) &&
                             properties.entries()[i].name() == name;
        own += is_same ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(found, std::vector<std::uint32_t>(4, kCount));
}

}  // namespace
