// Making a read model of what the library has loaded; see model.h.
#ifndef RUXCOMP_MODEL_CAPTURE_H_
#define RUXCOMP_MODEL_CAPTURE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ruxcomp/data.h"
#include "ruxcomp/model/builder.h"
#include "ruxcomp/query.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp::detail {

inline void Add(ModelBuilder& builder, std::uint32_t index, const std::string& text) {
  builder.AddText(index, text);
}
inline void Add(ModelBuilder& builder, std::uint32_t index, std::uint32_t number) {
  builder.AddNumber(index, number);
}

// In the order of a walk over the table: of several keys with one index the first counts.
template <class Key>
void CaptureTable(std::uint32_t index_class, const std::map<Key, std::uint32_t>& table,
                  ModelBuilder& builder) {
  builder.ReserveIndices(index_class, table.size());
  for (const auto& [key, index] : table) {
    if (ClassOf(index) == index_class) Add(builder, index, key);
  }
}

inline std::vector<const tagGCSECT*> LoadedSections() {
  std::vector<const tagGCSECT*> sections;
  for (const language::SectionKind& row : language::kSectionKinds) {
    const std::uint32_t kind = row.compiled;
    const std::uint32_t count = gcGetSectCount(kind);
    for (std::uint32_t i = 0; i < count; ++i) {
      // A handle points at the section's record.
      sections.push_back(static_cast<const tagGCSECT*>(gcGetSectByIndex(kind, i)));
    }
  }
  return sections;
}

inline void CaptureSections(ModelBuilder& builder) {
  const std::vector<const tagGCSECT*> sections = LoadedSections();
  std::size_t entries = 0;
  std::size_t values = 0;
  for (const tagGCSECT* section : sections) {
    entries += section->entries.size();
    for (const tagGCENTRY& entry : section->entries) values += entry.values.size();
  }
  builder.ReserveSections(sections.size(), entries, values);
  for (const tagGCSECT* section : sections) {
    builder.AddSection(section->identifier);
    for (const tagGCENTRY& entry : section->entries) {
      builder.AddEntry(entry.identifier, entry.values);
    }
  }
}

// Leaves the last-error code as it is.
inline ModelBuilder CaptureLoaded() {
  const std::uint32_t last_error = gcGetLastError();
  ModelBuilder builder;
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) \
  CaptureTable(RUX_CLASS_##name, g_tbl##name, builder);
#include "ruxcomp/language/symbol_tables.def"
  builder.AddCells(g_tblTableData.data(), g_tblTableData.size());
  CaptureSections(builder);
  gcSetLastError(last_error);
  return builder;
}

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_CAPTURE_H_
