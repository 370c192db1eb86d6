#include "tests/properties/expected_answers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "ruxcomp/query.h"

namespace {

constexpr std::uint32_t kClassMask = 0xFF000000;
constexpr std::uint32_t kNoIndex = 0xFFFFFFFF;
constexpr std::uint32_t kNameEntry = 0x02000015;
constexpr std::uint32_t kIdEntry = 0x02000008;
constexpr std::uint32_t kLastKind = 0x0100000B;

bool IsNamed(const MeantEntry& entry) {
  return entry.identifier < 0x02000000 || entry.identifier >= 0x03000000;
}

// Codes: 0 found, 3 no value, 10 not in the tables.
void ExpectDatum(const tagTBLDATA& data, const Datum& expected) {
  EXPECT_EQ(data.index & kClassMask, expected.index_class);
  EXPECT_EQ(data.kind, expected.meaning.index());
  EXPECT_EQ(gcGetLastError(), expected.meaning.index() == 0 ? 10u : 0u);
  if (data.kind != expected.meaning.index()) return;
  if (const auto* number = std::get_if<std::uint32_t>(&expected.meaning)) {
    EXPECT_EQ(data.data.number, *number);
  }
  if (const auto* text = std::get_if<std::string>(&expected.meaning)) {
    EXPECT_EQ(data.data.string, *text);
  }
}

void ExpectNoDatum(const tagTBLDATA& data, std::uint32_t code) {
  EXPECT_EQ(data.kind, 0u);
  EXPECT_EQ(data.index, kNoIndex);
  EXPECT_EQ(gcGetLastError(), code);
}

// The value that selector `base` + i picks: value i + `shift`, for i up to `last`, which counts
// from the number of values when it is negative.
struct SelectorRow {
  std::uint32_t type;
  std::uint32_t least, most;
  std::uint32_t base;
  std::uint32_t shift;
  int last;
};
constexpr std::uint32_t kAny = 0xFFFFFFFF;
constexpr std::uint32_t kRepeater = 0xFFFFFFFF;
constexpr SelectorRow kSelectors[] = {
    {1, 2, 2, 0x20000, 1, 0},
    {2, 4, 4, 0x30000, 1, 0},
    {2, 6, 6, 0x30000, 1, 0},
    {2, 4, 4, 0x40000, 1, 2},
    {2, 6, 6, 0x40000, 1, 2},
    {2, 6, 6, 0x50000, 3, 2},
    {3, 2, kAny, 0x60000, 1, 0},
    {3, 2, kAny, 0x70000, 1, -2},
    {4, 5, kAny, 0x80000, 1, 0},
    {4, 5, kAny, 0x90000, 2, 0},
    {4, 5, kAny, 0xA0000, 3, 0},
    {4, 5, kAny, 0xB0000, 4, 0},
    {5, 6, kAny, 0x80000, 1, 0},
    {5, 6, kAny, 0x90000, 2, 0},
    {5, 6, kAny, 0xA0000, 3, 0},
    {5, 6, kAny, 0xB0000, 4, 0},
    {5, 6, kAny, 0xC0000, 4, -5},
    {6, 3, kAny, 0xD0000, 1, 0},
    {6, 3, kAny, 0xE0000, 2, 0},
    {6, 3, kAny, 0xF0000, 2, -3},
    {7, 1, 5, 0x100000, 0, -1},
    {10, 3, 3, 0x120000, 1, 0},
    {10, 3, 3, 0x130000, 2, 0},
    {101, 2, 2, 0x140000, 1, 0},
    {102, 3, kAny, 0x150000, 1, 0},
    {102, 3, kAny, 0x170000, 2, 0},
    {102, 3, kAny, 0x180000, 2, -3},
    {103, 2, 2, 0x190000, 1, 0},
    {104, 2, 2, 0x1A0000, 1, 0},
    {kRepeater, 2, kAny, 0x160000, 0, 0},
    {kRepeater, 2, kAny, 0x170000, 1, 0},
    {kRepeater, 2, kAny, 0x180000, 1, -2},
};
constexpr std::uint32_t kLastSelector = 0x1C0000;

// Types that are laid out alike.
std::uint32_t LikeType(std::uint32_t type) {
  if (type == 8 || type == 12) return 4;
  if (type == 9 || type == 11) return 5;
  return type;
}

std::optional<std::size_t> Picked(std::uint32_t type, std::size_t count, std::uint32_t selector) {
  for (const SelectorRow& row : kSelectors) {
    if (row.type != type || count < row.least || count > row.most || selector < row.base) continue;
    const std::size_t i = selector - row.base;
    const std::size_t last = row.last < 0 ? count - static_cast<std::size_t>(-row.last)
                                          : static_cast<std::size_t>(row.last);
    if (i <= last) return i + row.shift;
  }
  return std::nullopt;
}

void ExpectSelected(GCENTRY entry, const MeantEntry& meant) {
  const std::uint32_t index_class = meant.identifier & kClassMask;
  if (index_class == 0x02000000 || index_class == 0x03000000) {
    ExpectNoDatum(gcGetValueByID(entry, 0x10000), 11);
    return;
  }
  const bool repeats = index_class == 0x06000000;
  const std::size_t count = meant.values.size();
  const std::uint32_t type =
      repeats ? kRepeater : LikeType(std::get<std::uint32_t>(meant.values.at(0).meaning));
  for (std::uint32_t base = 0; base <= kLastSelector; base += 0x10000) {
    for (std::uint32_t i = 0; i <= count + 1; ++i) {
      const tagTBLDATA data = gcGetValueByID(entry, base + i);
      if (base + i == 0x10000 && !repeats) {
        ExpectDatum(data, meant.values[0]);
      } else if (const auto picked = Picked(type, count, base + i)) {
        ExpectDatum(data, meant.values[*picked]);
      } else {
        ExpectNoDatum(data, 3);
      }
    }
  }
}

void ExpectEntry(GCENTRY entry, const MeantEntry& meant) {
  const std::size_t count = meant.values.size();
  ASSERT_EQ(gcGetValueCount(entry), count);
  for (std::uint32_t i = 0; i < count; ++i) {
    ExpectDatum(gcGetValueByIndex(entry, i), meant.values[i]);
  }
  ExpectNoDatum(gcGetValueByIndex(entry, static_cast<std::uint32_t>(count)), count == 0 ? 3 : 4);
  ExpectSelected(entry, meant);
}

// Of entries with one name or identifier, the first is found.
void ExpectFound(GCSECTION section, const MeantSection& meant) {
  const auto handle = [&](const auto& is_it) {
    const auto found = std::find_if(meant.entries.begin(), meant.entries.end(), is_it);
    return gcGetEntryByIndex(section, static_cast<std::uint32_t>(found - meant.entries.begin()),
                             nullptr);
  };
  for (const MeantEntry& entry : meant.entries) {
    if (!IsNamed(entry)) {
      const GCENTRY first =
          handle([&](const MeantEntry& other) { return other.identifier == entry.identifier; });
      EXPECT_EQ(gcGetEntryByType(section, entry.identifier), first);
      continue;
    }
    const GCENTRY first =
        handle([&](const MeantEntry& other) { return IsNamed(other) && other.name == entry.name; });
    EXPECT_EQ(gcGetEntryByName(section, entry.name, nullptr), first);
  }
  EXPECT_EQ(gcGetEntryByType(section, 0x02FFFFFF), nullptr);
  EXPECT_EQ(gcGetLastError(), 2u);
  EXPECT_EQ(gcGetEntryByName(section, "no such name", nullptr), nullptr);
  EXPECT_EQ(gcGetLastError(), meant.entries.empty() ? 2u : 7u);
}

void ExpectSection(GCSECTION section, const MeantSection& meant) {
  ASSERT_NE(section, nullptr);
  ASSERT_EQ(gcGetEntryCount(section), meant.entries.size());
  for (std::uint32_t i = 0; i < meant.entries.size(); ++i) {
    const MeantEntry& entry = meant.entries[i];
    SCOPED_TRACE("entry " + std::to_string(i) + ' ' + entry.name);
    std::uint32_t identifier = 0;
    const GCENTRY handle = gcGetEntryByIndex(section, i, &identifier);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(IsNamed(entry) ? identifier & kClassMask : identifier, entry.identifier);
    ExpectEntry(handle, entry);
  }
  ExpectFound(section, meant);
}

// What a section can be found by: the number of each ID, and each name that it carries.
std::vector<std::uint32_t> IdsOf(const MeantSection& section) {
  std::vector<std::uint32_t> ids;
  for (const MeantEntry& entry : section.entries) {
    if (entry.identifier != kIdEntry) continue;
    if (const auto* id = std::get_if<std::uint32_t>(&entry.values[0].meaning)) ids.push_back(*id);
  }
  return ids;
}
std::vector<std::string> NamesOf(const MeantSection& section) {
  const bool has_named_entries = section.identifier == 0x01000002 ||
                                 section.identifier == 0x0100000A ||
                                 section.identifier == 0x0100000B;
  std::vector<std::string> names;
  for (const MeantEntry& entry : section.entries) {
    if (entry.identifier == kNameEntry) {
      names.push_back(std::get<std::string>(entry.values[0].meaning));
    } else if (has_named_entries) {
      names.push_back(entry.name);
    }
  }
  return names;
}

// Every section of the kind by its IDs and names: the first that has one is found.
template <class Key, class KeysOf, class Find>
void ExpectFoundBy(const std::vector<const MeantSection*>& sections, KeysOf keys_of, Find find) {
  std::map<Key, std::uint32_t> first;
  for (std::uint32_t i = 0; i < sections.size(); ++i) {
    for (const Key& key : keys_of(*sections[i])) first.emplace(key, i);
  }
  for (const auto& [key, i] : first) {
    EXPECT_EQ(find(key), gcGetSectByIndex(sections[0]->identifier, i)) << key;
  }
}

void ExpectKind(std::uint32_t identifier, const std::vector<const MeantSection*>& sections) {
  const auto count = static_cast<std::uint32_t>(sections.size());
  ASSERT_EQ(gcGetSectCount(identifier), count);
  for (std::uint32_t i = 0; i < count; ++i) {
    SCOPED_TRACE("section " + std::to_string(i));
    ExpectSection(gcGetSectByIndex(identifier, i), *sections[i]);
  }
  EXPECT_EQ(gcGetSectByIndex(identifier, count), nullptr);
  EXPECT_EQ(gcGetLastError(), count == 0 ? 1u : 4u);
  ExpectFoundBy<std::uint32_t>(sections, IdsOf,
                               [&](std::uint32_t id) { return gcGetSectByID(identifier, id); });
  ExpectFoundBy<std::string>(sections, NamesOf, [&](const std::string& name) {
    return gcGetSectByName(identifier, name);
  });
}

void ExpectGroupsAndTables(const ScriptMeaning& meaning) {
  for (std::uint32_t i = 0; i < meaning.groups.size(); ++i) {
    EXPECT_EQ(gcGetGroupIndex(meaning.groups[i]), i);
  }
  EXPECT_EQ(gcGetGroupIndex("no such group"), kNoIndex);
  std::array<std::uint8_t, 256> cells = {};
  for (std::uint32_t i = 0; i < meaning.tables.size(); ++i) {
    EXPECT_EQ(gcGetTableData(i, cells.data()), 1u);
    EXPECT_EQ(cells, meaning.tables[i]) << "table " << i;
  }
  EXPECT_EQ(gcGetTableData(static_cast<std::uint32_t>(meaning.tables.size()), cells.data()), 0u);
  EXPECT_EQ(gcGetLastError(), 4u);
}

}  // namespace

void ExpectAnswers(const ScriptMeaning& meaning) {
  for (std::uint32_t identifier = 0x01000001; identifier <= kLastKind; ++identifier) {
    SCOPED_TRACE("kind " + std::to_string(identifier & 0xFF));
    std::vector<const MeantSection*> sections;
    for (const MeantSection& section : meaning.sections) {
      if (section.identifier == identifier) sections.push_back(&section);
    }
    ExpectKind(identifier, sections);
  }
  ExpectGroupsAndTables(meaning);
}
