// The read model by itself: what it answers about small files, how long that lives, and what null
// is.
#include "ruxcomp/model.h"

#include <algorithm>
#include <thread>
#include <type_traits>

#include "tests/api/meta_bytes.h"
#include "tests/read_model/same_answers.h"

namespace {

using ruxcomp::Entry;
using ruxcomp::Model;
using ruxcomp::Section;
using ruxcomp::Value;

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr std::uint32_t kProperty = RUX_CLASS_Property, kValue = RUX_CLASS_Value,
                        kNumber = RUX_CLASS_Dword, kString = RUX_CLASS_String,
                        kGroup = RUX_CLASS_Group;

static_assert(std::is_trivially_copyable_v<Section> && sizeof(Section) <= 16);
static_assert(std::is_trivially_copyable_v<Entry> && sizeof(Entry) <= 16);
static_assert(std::is_trivially_copyable_v<Value> && sizeof(Value) <= 16);
static_assert(std::is_nothrow_move_constructible_v<Model> && !std::is_copy_constructible_v<Model>);

class ModelTest : public MetaTest {
 protected:
  // The model of a file, which is loaded while it is made, and released.
  Model Of(const MetaBytes& bytes) {
    EXPECT_EQ(Load(bytes.str()), 1u);
    Model model = Model::OfLoaded();
    gcUnInit();
    return model;
  }
  // The same, held against the queries.
  Model Compared(const MetaBytes& bytes) {
    EXPECT_EQ(Load(bytes.str()), 1u);
    Model model = Model::OfLoaded();
    ExpectSameAnswers(model);
    gcUnInit();
    return model;
  }
};

// A group of the root and a sensor in it, with an upper limit of 45 and a value.
MetaBytes Board() {
  return MetaBytes()
      .Section(RUX_SECT_GROUP, {{RUX_ENTRY_PARENT, {kGroup}}, {RUX_ENTRY_NAME, {kGroup + 1}}})
      .Section(RUX_SECT_SENSOR, {{RUX_ENTRY_PARENT, {kGroup + 1}},
                                 {RUX_ENTRY_NAME, {kString}},
                                 {RUX_ENTRY_ID, {kNumber}},
                                 {RUX_ENTRY_THRESHOLD_FH, {kNumber + 1}},
                                 {kValue, {RUX_CLASS_ValueType + 1, RUX_CLASS_Small + 2}}})
      .Strings(kValue, {"RAW"})
      .Numbers({257, 45})
      .Strings(kString, {"INLET"})
      .Strings(kGroup, {"0", "BOARD"});
}

std::vector<std::string> NamesOf(const ruxcomp::Sections& sections) {
  std::vector<std::string> names;
  for (const Section section : sections) names.emplace_back(section.name());
  return names;
}

TEST_F(ModelTest, TellsSectionsEntriesAndValues) {
  const Model model = Of(Board());
  EXPECT_EQ(NamesOf(model.sections()), (std::vector<std::string>{"BOARD", "INLET"}));
  const Section sensor = model.sections(RUX_SECT_SENSOR)[0];
  ASSERT_TRUE(sensor);
  EXPECT_EQ(sensor.kind(), RUX_SECT_SENSOR);
  EXPECT_EQ(sensor.ordinal(), 0u);
  EXPECT_TRUE(sensor.has_name());
  EXPECT_EQ(sensor.name(), "INLET");
  EXPECT_EQ(sensor.id(), 257u);
  EXPECT_EQ(sensor.entries().size(), 5u);

  const Entry limit = sensor.entry(RUX_ENTRY_THRESHOLD_FH);
  EXPECT_EQ(limit, sensor.entries()[3]);
  EXPECT_FALSE(limit.has_name());
  EXPECT_EQ(limit.value().kind(), RUX_DATA_NUMBER);
  EXPECT_EQ(limit.value().index(), kNumber + 1);
  EXPECT_EQ(limit.value().number(), 45u);
  EXPECT_EQ(limit.value().text(), "");

  const Entry raw = sensor.entry_named("RAW");
  EXPECT_EQ(raw.identifier(), kValue);
  EXPECT_TRUE(raw.has_name());
  EXPECT_EQ(raw.name(), "RAW");
  EXPECT_EQ(raw.part(RUX_SELECT_TYPE).number(), 1u);
  EXPECT_EQ(raw.part(RUX_SELECT_TEXT).number(), 2u);
}

TEST_F(ModelTest, TextsEndWithAZeroByte) {
  const Model model = Of(Board());
  EXPECT_STREQ(model.sections(RUX_SECT_SENSOR)[0].name().data(), "INLET");
  EXPECT_STREQ(Value().text().data(), "");
}

TEST_F(ModelTest, FindsSectionsByIdAndName) {
  const Model model = Of(Board());
  const Section sensor = model.sections(RUX_SECT_SENSOR)[0];
  EXPECT_EQ(model.section_with_id(RUX_SECT_SENSOR, 257), sensor);
  EXPECT_FALSE(model.section_with_id(RUX_SECT_SENSOR, 45));
  EXPECT_FALSE(model.section_with_id(RUX_SECT_DEVICE, 257));
  EXPECT_EQ(model.section_named(RUX_SECT_SENSOR, "INLET"), sensor);
  EXPECT_FALSE(model.section_named(RUX_SECT_SENSOR, "INLE"));
  EXPECT_FALSE(model.section_named(RUX_SECT_GROUP, "INLET"));
  EXPECT_EQ(model.group_index("BOARD"), 1u);
  EXPECT_EQ(model.group_index("0"), 0u);
  EXPECT_EQ(model.group_index("INLET"), std::nullopt);
}

TEST_F(ModelTest, FindsTheParentGroup) {
  const Model model = Of(Board());
  const Section group = model.sections(RUX_SECT_GROUP)[0];
  EXPECT_EQ(model.sections(RUX_SECT_SENSOR)[0].parent(), group);
  EXPECT_FALSE(group.parent());
}

TEST_F(ModelTest, KindsFollowEachOtherAndSectionsKeepTheirOrder) {
  const Model model = Compared(MetaBytes()
                                   .Section(RUX_SECT_DEVICE, {{RUX_ENTRY_NAME, {kString + 2}}})
                                   .Section(RUX_SECT_SENSOR, {{RUX_ENTRY_NAME, {kString}}})
                                   .Section(RUX_SECT_DEVICE, {{RUX_ENTRY_NAME, {kString + 1}}})
                                   .Section(0x0100000F, {{RUX_ENTRY_NAME, {kString + 1}}})
                                   .Strings(kString, {"a", "b", "c"}));
  EXPECT_EQ(NamesOf(model.sections()), (std::vector<std::string>{"a", "c", "b"}));
  EXPECT_EQ(NamesOf(model.sections(RUX_SECT_DEVICE)), (std::vector<std::string>{"c", "b"}));
  EXPECT_TRUE(model.sections(0x0100000F).empty());
}

TEST_F(ModelTest, TheFirstSectionAndTheFirstEntryAreFound) {
  const Model model = Compared(
      MetaBytes()
          .Section(RUX_SECT_SENSOR, {{RUX_ENTRY_ID, {}}, {RUX_ENTRY_ID, {kNumber}}})
          .Section(RUX_SECT_SENSOR, {{RUX_ENTRY_ID, {kNumber}}, {RUX_ENTRY_NAME, {kString}}})
          .Section(RUX_SECT_SENSOR, {{RUX_ENTRY_NAME, {kString}}, {RUX_ENTRY_NAME, {kString + 1}}})
          .Numbers({7})
          .Strings(kString, {"a", "b"}));
  const ruxcomp::Sections sensors = model.sections(RUX_SECT_SENSOR);
  EXPECT_EQ(model.section_with_id(RUX_SECT_SENSOR, 7), sensors[0]);
  EXPECT_EQ(model.section_named(RUX_SECT_SENSOR, "a"), sensors[1]);
  EXPECT_EQ(model.section_named(RUX_SECT_SENSOR, "b"), sensors[2]);
  EXPECT_EQ(sensors[0].entry(RUX_ENTRY_ID), sensors[0].entries()[0]);
  EXPECT_EQ(sensors[0].id(), 7u);
  EXPECT_EQ(sensors[2].name(), "a");
}

TEST_F(ModelTest, PropertySectionsAreFoundByTheirEntries) {
  const Model model = Compared(MetaBytes()
                                   .Section(RUX_SECT_PROPERTY, {{kProperty, {kString}}})
                                   .Section(RUX_SECT_PROPERTY, {{kProperty + 1, {kString}}})
                                   .Section(RUX_SECT_SYSTEM, {{kProperty, {kString}}})
                                   .Strings(kProperty, {"COLOR", "SIZE"})
                                   .Strings(kString, {"red"}));
  EXPECT_EQ(model.section_named(RUX_SECT_PROPERTY, "SIZE"), model.sections(RUX_SECT_PROPERTY)[1]);
  EXPECT_FALSE(model.sections(RUX_SECT_PROPERTY)[1].has_name());
  EXPECT_FALSE(model.section_named(RUX_SECT_SYSTEM, "COLOR"));
  EXPECT_TRUE(model.sections(RUX_SECT_SYSTEM)[0].entry_named("COLOR"));
}

// Long names, short ones and those between are hashed in different ways.
TEST_F(ModelTest, NamesOfEveryLengthAreFound) {
  std::vector<std::string> names;
  for (std::size_t size = 0; size <= 40; ++size) {
    names.emplace_back(size, 'x');
    if (size > 0) names.push_back(std::string(size - 1, 'x') + 'y');
    if (size > 1) names.push_back('y' + std::string(size - 1, 'x'));
  }
  MetaBytes bytes;
  std::vector<tagGCENTRY> entries;
  for (std::uint32_t i = 0; i < names.size(); ++i) {
    bytes.Section(RUX_SECT_DEVICE, {{RUX_ENTRY_NAME, {kString + i}}});
    entries.push_back({kProperty + i, {kString + i}});
  }
  bytes.Section(RUX_SECT_PROPERTY, entries);
  const Model model = Compared(bytes.Strings(kString, names).Strings(kProperty, names));
  for (std::uint32_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(model.section_named(RUX_SECT_DEVICE, names[i]), model.sections(RUX_SECT_DEVICE)[i]);
    const Section properties = model.sections(RUX_SECT_PROPERTY)[0];
    EXPECT_EQ(properties.entry_named(names[i]), properties.entries()[i]);
  }
}

// Looked up in another way from some size on: around it and far beyond.
TEST_F(ModelTest, EntriesOfSectionsOfEverySizeAreFound) {
  MetaBytes bytes;
  std::vector<std::string> names;
  for (const std::uint32_t size : {1u, 63u, 64u, 65u, 66u, 200u, 2000u}) {
    std::vector<tagGCENTRY> entries;
    for (std::uint32_t i = 0; i < size; ++i) entries.push_back({kProperty + i, {kNumber}});
    entries[size / 2].identifier = entries.back().identifier;  // twice: the first one is found
    bytes.Section(RUX_SECT_DEVICE, entries);
  }
  for (std::uint32_t i = 0; i < 2000; ++i) names.push_back("P" + std::to_string(i * i));
  const Model model = Of(bytes.Numbers({1}).Strings(kProperty, names));
  for (const Section section : model.sections()) {
    const auto size = static_cast<std::uint32_t>(section.entries().size());
    SCOPED_TRACE(size);
    for (std::uint32_t i = 0; i < size; ++i) {
      if (i == size / 2 && i != size - 1) {
        EXPECT_FALSE(section.entry(kProperty + i));
        EXPECT_FALSE(section.entry_named(names[i]));
        continue;
      }
      const Entry expected = section.entries()[i == size - 1 ? size / 2 : i];
      EXPECT_EQ(section.entry(kProperty + i), expected);
      EXPECT_EQ(section.entry_named(names[i]), expected);
    }
    EXPECT_FALSE(section.entry(kProperty + size));
    EXPECT_FALSE(section.entry_named("P3"));
  }
}

TEST_F(ModelTest, TheLargestNumberIsNone) {
  const Model model = Compared(
      MetaBytes()
          .Section(RUX_SECT_SENSOR, {{RUX_ENTRY_ID, {kNumber}}, {RUX_ENTRY_PID, {kNumber, kNone}}})
          .Numbers({kNone}));
  const Section sensor = model.sections(RUX_SECT_SENSOR)[0];
  EXPECT_EQ(sensor.id(), std::nullopt);
  EXPECT_FALSE(model.section_with_id(RUX_SECT_SENSOR, kNone));
  const Entry pid = sensor.entry(RUX_ENTRY_PID);
  EXPECT_EQ(pid.values().size(), 2u);
  EXPECT_FALSE(pid.value(0));
  EXPECT_EQ(pid.value(0).index(), kNumber);
  EXPECT_FALSE(pid.value(1));
}

TEST_F(ModelTest, ImmediatesCarryTheirNumbers) {
  const Model model = Compared(MetaBytes().Section(
      RUX_SECT_ACTION, {{RUX_ENTRY_ID, {0x1D000005}}, {RUX_ENTRY_PID, {0x1E000067, 0x1FFFFFFF}}}));
  const Section action = model.sections(RUX_SECT_ACTION)[0];
  EXPECT_EQ(action.id(), 5u);
  EXPECT_EQ(model.section_with_id(RUX_SECT_ACTION, 5), action);
  EXPECT_EQ(action.entry(RUX_ENTRY_PID).value(0).number(), 103u);
  EXPECT_EQ(action.entry(RUX_ENTRY_PID).value(1).number(), 0xFFFFFFu);
}

// A key that is repeated keeps its first index, and the last ones are beyond the number of keys.
TEST_F(ModelTest, RepeatedKeysLeaveGapsAmongTheIndices) {
  std::vector<tagGCENTRY> entries;
  for (const std::uint32_t table : {kNumber, kString}) {
    tagGCENTRY entry = {RUX_ENTRY_SENSORS, {}};
    for (std::uint32_t i = 0; i < 7; ++i) entry.values.push_back(table + i);
    entry.values.push_back(table + 0xFFFFFF);
    entries.push_back(entry);
  }
  const Model model = Compared(MetaBytes()
                                   .Section(RUX_SECT_PELMGROUP, entries)
                                   .Numbers({8, 8, 8, 9, 9, 3})
                                   .Strings(kString, {"b", "b", "b", "b", "a", "c"}));
  const Section group = model.sections(RUX_SECT_PELMGROUP)[0];
  std::string texts;
  for (const Entry entry : group.entries()) {
    for (const Value& value : entry.values()) {
      texts += value ? std::to_string(value.number()) + std::string(value.text()) + ' ' : "- ";
    }
  }
  EXPECT_EQ(texts, "8 - - 9 - 3 - - 0b - - - 0a 0c - - ");
}

// The tables are the library's, but hosts can reach them.
TEST_F(ModelTest, OfKeysWithOneIndexTheFirstCounts) {
  ASSERT_EQ(Load(MetaBytes()
                     .Section(RUX_SECT_DEVICE, {{RUX_ENTRY_NAME, {kString + 9, 0x12345678}}})
                     .Strings(kString, {"m"})
                     .str()),
            1u);
  for (const char* key : {"z", "k", "x"}) g_tblString[key] = kString + 9;
  g_tblString["far"] = 0x12345678;
  g_tblString["foreign"] = kNumber;
  const Model model = Model::OfLoaded();
  const Section device = model.sections(RUX_SECT_DEVICE)[0];
  EXPECT_EQ(device.name(), "k");
  EXPECT_EQ(device.entry(RUX_ENTRY_NAME).value(1).text(), "far");
  EXPECT_EQ(model.section_named(RUX_SECT_DEVICE, "k"), device);
  EXPECT_EQ(
      gcGetValueByIndex(gcGetEntryByIndex(gcGetSectByIndex(RUX_SECT_DEVICE, 0), 0, nullptr), 0)
          .data.string,
      device.name());
}

TEST_F(ModelTest, TableCellsAreCopied) {
  std::string cells(2 * 256 + 100, '\1');  // the last 100 make no table
  cells[256] = '\x7F';
  const Model model = Compared(MetaBytes().Block(RUX_CLASS_TableData, cells));
  ASSERT_NE(model.table(1), nullptr);
  EXPECT_EQ((*model.table(1))[0], 0x7F);
  EXPECT_EQ((*model.table(1))[255], 1);
  EXPECT_EQ(model.table(2), nullptr);
}

TEST_F(ModelTest, SectionsWithoutEntriesAndEntriesWithoutValuesAreThere) {
  const Model model = Compared(
      MetaBytes().Section(RUX_SECT_DEVICE, {}).Section(RUX_SECT_DEVICE, {{kProperty, {}}}));
  EXPECT_TRUE(model.sections()[0]);
  EXPECT_TRUE(model.sections()[0].entries().empty());
  const Entry entry = model.sections()[1].entries()[0];
  EXPECT_TRUE(entry);
  EXPECT_TRUE(entry.values().empty());
  EXPECT_FALSE(entry.value());
}

TEST_F(ModelTest, NullHandlesAreEmptyAllTheWay) {
  const Section section;
  EXPECT_FALSE(section);
  EXPECT_EQ(section.kind(), 0u);
  EXPECT_EQ(section.ordinal(), 0u);
  EXPECT_FALSE(section.has_name());
  EXPECT_EQ(section.name(), "");
  EXPECT_EQ(section.id(), std::nullopt);
  EXPECT_TRUE(section.entries().empty());
  EXPECT_FALSE(section.entries()[0]);
  EXPECT_FALSE(section.parent());
  const Entry entry = section.entry(RUX_ENTRY_NAME);
  EXPECT_FALSE(entry);
  EXPECT_FALSE(section.entry_named(""));
  EXPECT_EQ(entry.identifier(), kNone);
  EXPECT_FALSE(entry.has_name());
  EXPECT_EQ(entry.name(), "");
  EXPECT_TRUE(entry.values().empty());
  for (const Value& value : entry.values()) ADD_FAILURE() << value.index();
  const Value value = entry.part(RUX_SELECT_TYPE);
  EXPECT_FALSE(value);
  EXPECT_EQ(value.kind(), RUX_DATA_NONE);
  EXPECT_EQ(value.index(), kNone);
  EXPECT_EQ(value.number(), 0u);
  EXPECT_EQ(value.text(), "");
}

TEST_F(ModelTest, RangesHaveRandomAccess) {
  const Model model = Of(Board());
  const ruxcomp::Entries entries = model.sections(RUX_SECT_SENSOR)[0].entries();
  const auto found = std::find_if(entries.begin(), entries.end(), [](const Entry& entry) {
    return entry.identifier() == RUX_ENTRY_THRESHOLD_FH;
  });
  EXPECT_EQ(found - entries.begin(), 3);
  EXPECT_EQ(found->value().number(), 45u);
  EXPECT_EQ(*(entries.end() - 2), *found);
  EXPECT_EQ(entries.begin()[3], entries[3]);
  EXPECT_LT(entries.begin(), found);
}

TEST_F(ModelTest, OutlivesWhatWasLoaded) {
  ASSERT_EQ(Load(Board().str()), 1u);
  const Model board = Model::OfLoaded();
  const Section sensor = board.section_named(RUX_SECT_SENSOR, "INLET");
  const std::string_view name = sensor.name();
  gcUnInit();
  ASSERT_EQ(Load(MetaBytes()
                     .Section(RUX_SECT_SENSOR, {{RUX_ENTRY_NAME, {kString}}})
                     .Strings(kString, {"OUTLET"})
                     .str()),
            1u);
  const Model other = Model::OfLoaded();
  gcUnInit();
  EXPECT_EQ(name, "INLET");
  EXPECT_EQ(sensor.entry(RUX_ENTRY_THRESHOLD_FH).value().number(), 45u);
  EXPECT_EQ(board.section_named(RUX_SECT_SENSOR, "INLET"), sensor);
  EXPECT_EQ(other.sections(RUX_SECT_SENSOR)[0].name(), "OUTLET");
  EXPECT_FALSE(other.section_named(RUX_SECT_SENSOR, "INLET"));
}

TEST_F(ModelTest, MayBeMovedUnderItsHandles) {
  Model model = Of(Board());
  const Section sensor = model.section_with_id(RUX_SECT_SENSOR, 257);
  const Model moved = std::move(model);
  EXPECT_EQ(sensor.name(), "INLET");
  EXPECT_EQ(moved.section_with_id(RUX_SECT_SENSOR, 257), sensor);
  EXPECT_TRUE(model.sections().empty());  // NOLINT(bugprone-use-after-move): what is promised
  EXPECT_TRUE(model.sections(RUX_SECT_SENSOR).empty());
  EXPECT_FALSE(model.section_with_id(RUX_SECT_SENSOR, 257));
  EXPECT_FALSE(model.section_named(RUX_SECT_SENSOR, "INLET"));
  EXPECT_EQ(model.group_index("BOARD"), std::nullopt);
  EXPECT_EQ(model.group_index("0"), 0u);
  EXPECT_EQ(model.table(0), nullptr);
}

TEST_F(ModelTest, LoadingLeavesNothingLoaded) {
  Write("board.meta", Board().str());
  tagMETAFILEINFO info{};
  const std::optional<Model> model = Model::Load(Path("board.meta"), &info);
  ASSERT_TRUE(model);
  EXPECT_EQ(info.version, 0x01000000u);
  EXPECT_EQ(model->sections().size(), 2u);
  EXPECT_EQ(gcGetSectCount(RUX_SECT_SENSOR), 0u);
}

TEST_F(ModelTest, LoadingReleasesWhatWasLoaded) {
  ASSERT_EQ(Load(Board().str()), 1u);
  EXPECT_FALSE(Model::Load(Path("none.meta")));
  EXPECT_EQ(gcGetLastError(), 13u);
  EXPECT_EQ(gcGetSectCount(RUX_SECT_SENSOR), 0u);
}

TEST_F(ModelTest, ARefusedFileGivesNoModel) {
  Write("board.meta", Board().str().substr(0, 300));
  EXPECT_FALSE(Model::Load(Path("board.meta")));
  EXPECT_EQ(gcGetLastError(), 13u);
  EXPECT_EQ(gcGetSectCount(RUX_SECT_GROUP), 0u);
}

TEST_F(ModelTest, MakingOneLeavesTheLastError) {
  ASSERT_EQ(Load(Board().str()), 1u);
  gcSetLastError(99);
  Model::OfLoaded();
  EXPECT_EQ(gcGetLastError(), 99u);
}

TEST_F(ModelTest, IsBuiltWithoutTheLibrary) {
  ruxcomp::ModelBuilder builder;
  builder.AddSection(RUX_SECT_SENSOR);
  builder.AddEntry(RUX_ENTRY_NAME, Words{kString});
  builder.AddEntry(RUX_ENTRY_ID, Words{kNumber + 7});
  builder.AddSection(0x0100000F);
  builder.AddEntry(RUX_ENTRY_NAME, Words{kString});
  builder.AddSection(RUX_SECT_GROUP);
  builder.AddEntry(RUX_ENTRY_SENSORS, Words{kNumber, kNumber + 7, kNumber + 7});
  builder.AddText(kString, "INLET");
  builder.AddText(kString, "second");
  builder.AddNumber(kNumber + 7, 257);
  const std::vector<std::uint8_t> cells(2 * RUX_TABLE_CELLS - 1, 9);
  builder.AddCells(cells.data(), cells.size());
  const Model model(std::move(builder));
  ASSERT_EQ(model.sections().size(), 2u);
  EXPECT_EQ(model.sections()[0].kind(), RUX_SECT_GROUP);
  const ruxcomp::Values values = model.sections()[0].entries()[0].values();
  EXPECT_EQ(values.size(), 3u);
  EXPECT_FALSE(values[0]);
  EXPECT_EQ(values[2].number(), 257u);
  EXPECT_EQ(model.section_with_id(RUX_SECT_SENSOR, 257).name(), "INLET");
  EXPECT_TRUE(model.section_named(RUX_SECT_SENSOR, "INLET"));
  EXPECT_EQ((*model.table(0))[255], 9);
  EXPECT_EQ(model.table(1), nullptr);
}

TEST_F(ModelTest, ManyThreadsMayRead) {
  const Model model = Of(Board());
  std::vector<std::thread> threads;
  std::vector<std::uint32_t> limits(4);
  for (std::uint32_t& limit : limits) {
    threads.emplace_back([&model, &limit] {
      limit = model.section_named(RUX_SECT_SENSOR, "INLET")
                  .entry(RUX_ENTRY_THRESHOLD_FH)
                  .value()
                  .number();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(limits, (std::vector<std::uint32_t>{45, 45, 45, 45}));
}

}  // namespace
