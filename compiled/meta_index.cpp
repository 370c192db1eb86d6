#include "compiled/meta_index.h"

#include <algorithm>

#include "ruxcomp/identifiers.h"

namespace rux::compiled {

const CompiledTable* TableOf(const CompiledMeta& meta, std::uint32_t base) {
  const auto found = std::find_if(meta.tables.begin(), meta.tables.end(),
                                  [&](const CompiledTable& table) { return table.base == base; });
  return found == meta.tables.end() ? nullptr : &*found;
}

Datum Resolve(const CompiledMeta& meta, std::uint32_t index) {
  if (const std::optional<Datum> immediate = ImmediateDatum(index)) return *immediate;
  const CompiledTable* table = TableOf(meta, ClassOfIndex(index));
  if (table == nullptr) return {};
  const std::uint32_t ordinal = OrdinalOfIndex(index);
  if (ordinal < table->numbers.size()) return NumberDatum(table->numbers[ordinal]);
  return ordinal < table->texts.size() ? TextDatum(index, table->texts[ordinal]) : Datum();
}

std::string KeyOf(const CompiledMeta& meta, const CompiledSection& section,
                  const CompiledEntry& entry) {
  return KeyText(section.identifier, entry.identifier, Resolve(meta, entry.identifier));
}

}  // namespace rux::compiled
