// The values of an entry: by ordinal, and by selector.
#include "backend/symbol_tables.h"
#include "query/result.h"
#include "ruxcomp/query.h"

namespace {

constexpr tagTBLDATA kNothing = {RUX_DATA_NONE, kNoNumber, {nullptr}};

const tagGCENTRY* Entry(GCENTRY handle) { return static_cast<const tagGCENTRY*>(handle); }

tagTBLDATA Resolved(std::uint32_t value) {
  const tagTBLDATA data = GetTblData(value);
  return Result(data.kind == RUX_DATA_NONE ? RUX_ERROR_UNRESOLVED : RUX_ERROR_OK, data);
}

constexpr std::uint32_t SELECTOR_ANY = 0xFFFFFFFF;
constexpr std::uint32_t SELECTOR_REPEATER = 0xFFFFFFFF;  // no type: it never resolves

struct SelectorRow {
  std::uint32_t type;
  std::uint32_t least;
  std::uint32_t most;
  std::uint32_t selector;
  std::uint32_t first;
  std::uint32_t last;
};

constexpr SelectorRow kSelectors[] = {
#define SELECTOR(part, type, least, most, selector, first, last) \
  {type, least, most, selector, first, last},
#include "ruxcomp/selectors.def"
};

// The value that a selector picks.
tagTBLDATA Pick(const tagGCENTRY& entry, std::uint32_t type, std::uint32_t selector) {
  const std::size_t count = entry.values.size();
  for (const SelectorRow& row : kSelectors) {
    if (row.type != type || count < row.least || count > row.most) continue;
    if (selector < row.selector) continue;
    const std::size_t picked = std::size_t{row.first} + (selector - row.selector);
    if (picked > row.last || picked >= count) continue;
    return Resolved(entry.values[picked]);
  }
  return Result(RUX_ERROR_NO_VALUE, kNothing);
}

}  // namespace

std::uint32_t gcGetValueCount(GCENTRY entry) {
  if (!entry) return Result(RUX_ERROR_NO_ENTRY, kNoNumber);
  return Result(RUX_ERROR_OK, static_cast<std::uint32_t>(Entry(entry)->values.size()));
}

tagTBLDATA gcGetValueByIndex(GCENTRY entry, std::uint32_t ordinal) {
  if (!entry) return Result(RUX_ERROR_NO_ENTRY, kNothing);
  const auto& values = Entry(entry)->values;
  if (values.empty()) return Result(RUX_ERROR_NO_VALUE, kNothing);
  if (ordinal >= values.size()) return Result(RUX_ERROR_OUT_OF_RANGE, kNothing);
  return Resolved(values[ordinal]);
}

tagTBLDATA gcGetValueByID(GCENTRY entry, std::uint32_t selector) {
  if (!entry) return Result(RUX_ERROR_NO_ENTRY, kNothing);
  const tagGCENTRY& record = *Entry(entry);
  const std::uint32_t kind = ClassOf(record.identifier);
  if (kind == RUX_CLASS_Repeater) return Pick(record, SELECTOR_REPEATER, selector);
  if (kind != RUX_CLASS_Value && kind != RUX_CLASS_Global) {
    return Result(RUX_ERROR_NOT_SELECTABLE, kNothing);
  }
  if (record.values.empty()) return Result(RUX_ERROR_NO_VALUE, kNothing);
  const tagTBLDATA type = GetTblData(record.values.front());
  if (type.kind != RUX_DATA_NUMBER) return Result(RUX_ERROR_UNRESOLVED, kNothing);
  if (selector == RUX_SELECT_TYPE) return Result(RUX_ERROR_OK, type);
  return Pick(record, type.data.number, selector);
}
