#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <vector>

#include "compiled/datum.h"
#include "compiled/meta.h"
#include "fuzz/loaded.h"
#include "fuzz/target.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/query.h"
#include "ruxcomp/records.h"

namespace fuzz {
namespace {

template <class Item>
bool IsFirst(const std::vector<Item>& items, std::size_t ordinal) {
  if (ordinal >= items.size()) return false;
  const auto at = items.begin() + static_cast<std::ptrdiff_t>(ordinal);
  return std::find(items.begin(), at, *at) == at;
}

// What a word refers to, going by what was decoded. Of equal items of a table only the first has
// an index, and the largest number looks like none.
tagTBLDATA ExpectedData(const rux::compiled::CompiledMeta& meta, std::uint32_t index) {
  tagTBLDATA data = {RUX_DATA_NONE, index, {nullptr}};
  const std::uint32_t base = ruxcomp::language::ClassOf(index);
  const std::uint32_t ordinal = ruxcomp::language::OrdinalOf(index);
  const rux::compiled::CompiledTable* table = rux::compiled::TableOf(meta, base);
  if (base == RUX_CLASS_Small || base == RUX_CLASS_ValueType || base == RUX_CLASS_Operator) {
    data.kind = RUX_DATA_NUMBER;
    data.data.number = ordinal;
  } else if (table && IsFirst(table->texts, ordinal)) {
    data.kind = RUX_DATA_STRING;
    data.data.string = table->texts[ordinal].c_str();
  } else if (table && IsFirst(table->numbers, ordinal) && table->numbers[ordinal] != 0xFFFFFFFF) {
    data.kind = RUX_DATA_NUMBER;
    data.data.number = table->numbers[ordinal];
  }
  return data;
}

bool AreEqual(const tagTBLDATA& one, const tagTBLDATA& other) {
  if (one.kind != other.kind || one.index != other.index) return false;
  if (one.kind == RUX_DATA_NUMBER) return one.data.number == other.data.number;
  if (one.kind == RUX_DATA_STRING) return std::strcmp(one.data.string, other.data.string) == 0;
  return true;
}

// Whether the length of a table counts names without an index: how these are read depends on what
// the file happens to hold after the names.
bool HasNotes(const rux::compiled::CompiledMeta& meta) {
  return std::any_of(meta.tables.begin(), meta.tables.end(),
                     [](const rux::compiled::CompiledTable& table) { return !table.note.empty(); });
}

void CompareValues(const rux::compiled::CompiledMeta& meta,
                   const rux::compiled::CompiledEntry& decoded, GCENTRY entry) {
  Expect(gcGetValueCount(entry) == decoded.values.size(), "all values are loaded");
  for (std::uint32_t i = 0; i < decoded.values.size(); ++i) {
    const tagTBLDATA data = gcGetValueByIndex(entry, i);
    Expect(data.index == decoded.values[i], "values are those of the file");
    Expect(HasNotes(meta) || AreEqual(data, ExpectedData(meta, data.index)),
           "values refer to what the file's tables have");
  }
}

}  // namespace

void ExpectLoaded(const rux::compiled::CompiledMeta& meta) {
  std::map<std::uint32_t, std::uint32_t> ordinals;
  for (const rux::compiled::CompiledSection& decoded : meta.sections) {
    const GCSECTION section = gcGetSectByIndex(decoded.identifier, ordinals[decoded.identifier]++);
    Expect(gcGetEntryCount(section) == decoded.entries.size(), "all entries are loaded");
    for (std::uint32_t i = 0; i < decoded.entries.size(); ++i) {
      std::uint32_t identifier = 0;
      const GCENTRY entry = gcGetEntryByIndex(section, i, &identifier);
      Expect(identifier == decoded.entries[i].identifier, "entries keep their identifiers");
      CompareValues(meta, decoded.entries[i], entry);
    }
  }
  for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_INCLUDE; ++kind) {
    Expect(gcGetSectCount(kind) == ordinals[kind], "no section is loaded that is not in the file");
  }
}

}  // namespace fuzz
