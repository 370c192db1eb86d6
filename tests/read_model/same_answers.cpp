#include "tests/read_model/same_answers.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "ruxcomp/data.h"
#include "ruxcomp/query.h"

namespace {

using ruxcomp::Entry;
using ruxcomp::Model;
using ruxcomp::Section;
using ruxcomp::Value;

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr std::uint32_t kLastSelector = 0x1B0000;

constexpr std::uint32_t kKinds[] = {
#define SECTION(keyword, kind, notation, form, naming, uniqueness) RUX_SECT_##keyword,
#include "ruxcomp/language/sections.def"
};

void ExpectSame(const Value& value, const tagTBLDATA& data, const char* question, std::uint32_t i) {
  const bool is_same = value.kind() == data.kind && value.index() == data.index &&
                       bool(value) == (data.kind != 0) &&
                       value.number() == (data.kind == RUX_DATA_NUMBER ? data.data.number : 0) &&
                       value.text() == (data.kind == RUX_DATA_STRING ? data.data.string : "");
  EXPECT_TRUE(is_same) << question << ' ' << i << ": index " << value.index() << ", kind "
                       << value.kind() << ", number " << value.number() << ", text "
                       << value.text();
}

// The names of all tables, in use or not, and some that are none.
std::set<std::string> AllNames() {
  std::set<std::string> names = {"", "0", "no such name"};
  const auto add = [&](const auto& table) {
    for (const auto& [key, index] : table) names.insert(key);
  };
  add(g_tblProperty);
  add(g_tblGlobal);
  add(g_tblValue);
  add(g_tblRepeater);
  add(g_tblString);
  add(g_tblGroup);
  add(g_tblAction);
  add(g_tblTableName);
  return names;
}

// All numbers that an ID may be, and some more.
std::set<std::uint32_t> AllNumbers() {
  std::set<std::uint32_t> numbers = {0, 1, 2, 0x00FFFFFF, 0x7FFFFFFF, kNone};
  for (const auto& [number, index] : g_tblDword) numbers.insert(number);
  return numbers;
}

void CompareValues(const Entry& entry, GCENTRY handle) {
  const std::uint32_t count = gcGetValueCount(handle);
  ASSERT_EQ(entry.values().size(), count);
  EXPECT_EQ(entry.values().empty(), count == 0);
  std::uint32_t n = 0;
  for (const Value& value : entry.values()) {
    ExpectSame(value, gcGetValueByIndex(handle, n), "value", n);
    ++n;
  }
  EXPECT_EQ(n, count);
  for (const std::uint32_t i : {std::uint32_t{0}, count, count + 1, kNone}) {
    ExpectSame(entry.value(i), gcGetValueByIndex(handle, i), "value", i);
  }
  const std::uint32_t last = std::min(count, 8u) + 1;
  for (std::uint32_t base = 0; base <= kLastSelector; base += 0x10000) {
    for (std::uint32_t i = 0; i <= last; ++i) {
      ExpectSame(entry.part(base + i), gcGetValueByID(handle, base + i), "selector", base + i);
    }
  }
}

// The entries of a section and their ordinals.
std::map<GCENTRY, std::size_t> Ordinals(GCSECTION section) {
  std::map<GCENTRY, std::size_t> ordinals;
  const std::uint32_t count = gcGetEntryCount(section);
  for (std::uint32_t i = 0; i < count; ++i) ordinals[gcGetEntryByIndex(section, i, nullptr)] = i;
  return ordinals;
}

void CompareSection(const Section& section, GCSECTION handle) {
  const std::map<GCENTRY, std::size_t> ordinals = Ordinals(handle);
  ASSERT_EQ(section.entries().size(), ordinals.size());
  const auto expect_same = [&](const Entry& entry, GCENTRY expected) {
    EXPECT_EQ(bool(entry), expected != nullptr);
    EXPECT_EQ(entry, expected ? section.entries()[ordinals.at(expected)] : Entry());
  };
  std::set<std::string> names = {"", "no such name"};
  std::uint32_t i = 0;
  for (const Entry entry : section.entries()) {
    SCOPED_TRACE("entry " + std::to_string(i));
    std::uint32_t identifier = 0;
    const GCENTRY expected = gcGetEntryByIndex(handle, i++, &identifier);
    EXPECT_EQ(entry.identifier(), identifier);
    expect_same(entry, expected);
    expect_same(section.entry(identifier), gcGetEntryByType(handle, identifier));
    CompareValues(entry, expected);
    if (entry.has_name()) names.emplace(entry.name());
  }
  expect_same(section.entries()[i], nullptr);
  expect_same(section.entry(0x02FFFFFF), gcGetEntryByType(handle, 0x02FFFFFF));
  for (const std::string& name : names) {
    SCOPED_TRACE("entry " + name);
    expect_same(section.entry_named(name), gcGetEntryByName(handle, name, nullptr));
  }
}

void CompareKind(const Model& model, std::uint32_t kind) {
  SCOPED_TRACE("kind " + std::to_string(kind));
  const std::uint32_t count = gcGetSectCount(kind);
  ASSERT_EQ(model.sections(kind).size(), count);
  std::map<GCSECTION, Section> sections = {{nullptr, Section()}};
  for (const Section section : model.sections(kind)) {
    SCOPED_TRACE("section " + std::to_string(section.ordinal()));
    EXPECT_EQ(section.kind(), kind);
    ASSERT_EQ(section.ordinal(), sections.size() - 1);
    const GCSECTION handle = gcGetSectByIndex(kind, section.ordinal());
    sections[handle] = section;
    CompareSection(section, handle);
  }
  EXPECT_FALSE(model.sections(kind)[count]);
  for (const std::uint32_t id : AllNumbers()) {
    EXPECT_EQ(model.section_with_id(kind, id), sections.at(gcGetSectByID(kind, id))) << id;
  }
  for (const std::string& name : AllNames()) {
    EXPECT_EQ(model.section_named(kind, name), sections.at(gcGetSectByName(kind, name))) << name;
  }
}

void CompareTables(const Model& model) {
  for (std::uint32_t i = 0; i <= g_tblTableData.size() / RUX_TABLE_CELLS; ++i) {
    ruxcomp::TableCells cells;
    const bool is_there = gcGetTableData(i, cells.data()) != 0;
    ASSERT_EQ(model.table(i) != nullptr, is_there) << "table " << i;
    if (!is_there) continue;
    EXPECT_EQ(*model.table(i), cells) << "table " << i;
  }
  EXPECT_EQ(model.table(kNone), nullptr);
}

}  // namespace

void ExpectSameAnswers(const Model& model) {
  std::size_t count = 0;
  for (const std::uint32_t kind : kKinds) {
    CompareKind(model, kind);
    count += model.sections(kind).size();
  }
  EXPECT_EQ(model.sections().size(), count);
  // Sections of other kinds, which damaged files hold, are in no model.
  for (const std::uint32_t kind : {0u, 0x01000000u, 0x0100000Fu, 0x02000005u, kNone}) {
    EXPECT_TRUE(model.sections(kind).empty()) << kind;
    EXPECT_FALSE(model.section_named(kind, "")) << kind;
  }
  for (const std::string& name : AllNames()) {
    EXPECT_EQ(model.group_index(name).value_or(kNone), gcGetGroupIndex(name)) << name;
  }
  CompareTables(model);
}
