// The values of an entry: by ordinal, and by selector.
#include <cstdint>
#include <optional>

#include "backend/symbol_tables.h"
#include "query/result.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/query.h"
#include "ruxcomp/record_rules.h"
#include "ruxcomp/records.h"

namespace {

constexpr tagTBLDATA kNothing = {RUX_DATA_NONE, kNoNumber, {nullptr}};

const tagGCENTRY* Entry(GCENTRY handle) { return static_cast<const tagGCENTRY*>(handle); }

tagTBLDATA Resolved(std::uint32_t value) {
  const tagTBLDATA data = GetTblData(value);
  return Result(data.kind == RUX_DATA_NONE ? RUX_ERROR_UNRESOLVED : RUX_ERROR_OK, data);
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
  const auto type = [&record]() -> std::optional<std::uint32_t> {
    const tagTBLDATA first = GetTblData(record.values.front());
    if (first.kind != RUX_DATA_NUMBER) return std::nullopt;
    return first.data.number;
  };
  const ruxcomp::Selection selected =
      ruxcomp::Select(record.identifier, record.values.size(), selector, type);
  if (selected.code != RUX_ERROR_OK) return Result(selected.code, kNothing);
  return Resolved(record.values[selected.ordinal]);
}
