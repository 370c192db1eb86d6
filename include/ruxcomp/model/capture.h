// Making a read model of what is loaded; see model.h.
#ifndef RUXCOMP_MODEL_CAPTURE_H_
#define RUXCOMP_MODEL_CAPTURE_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ruxcomp/data.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/query.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp::detail {

// Makes the records of a model from what the library has loaded.
class Capture {
 public:
  std::unique_ptr<const Records> Take() {
    const std::uint32_t last_error = gcGetLastError();
#define SYMBOL_TABLE(name, class_byte, key) model_->tables.Fill(RUX_CLASS_##name, g_tbl##name);
#include "ruxcomp/symbol_tables.def"
    CopyCells();
    const std::vector<const tagGCSECT*> sections = LoadedSections();
    Reserve(sections);
    for (const tagGCSECT* section : sections) AddSection(*section);
    model_->entries.push_back({0, static_cast<std::uint32_t>(model_->values.size())});
    gcSetLastError(last_error);
    return std::move(model_);
  }

 private:
  void CopyCells() {
    model_->cells.resize(g_tblTableData.size() / RUX_TABLE_CELLS);
    const std::uint8_t* from = g_tblTableData.data();
    for (TableCells& cells : model_->cells) {
      std::copy_n(from, cells.size(), cells.begin());
      from += cells.size();
    }
  }

  std::vector<const tagGCSECT*> LoadedSections() {
    std::vector<const tagGCSECT*> sections;
    for (std::uint32_t i = 0; i < Records::kKinds; ++i) {
      const std::uint32_t kind = RUX_SECT_MORVRUX + i;
      const std::uint32_t count = gcGetSectCount(kind);
      for (std::uint32_t ordinal = 0; ordinal < count; ++ordinal) {
        // A handle points at the section's record.
        sections.push_back(static_cast<const tagGCSECT*>(gcGetSectByIndex(kind, ordinal)));
      }
      model_->kind_begin[i + 1] = static_cast<std::uint32_t>(sections.size());
    }
    return sections;
  }

  void Reserve(const std::vector<const tagGCSECT*>& sections) {
    std::size_t entries = 0;
    std::size_t values = 0;
    for (const tagGCSECT* section : sections) {
      entries += section->entries.size();
      for (const tagGCENTRY& entry : section->entries) values += entry.values.size();
    }
    model_->sections.reserve(sections.size());
    model_->sections_by_id.Reserve(sections.size());
    model_->sections_by_name.Reserve(sections.size());
    model_->entries.reserve(entries + 1);
    model_->values.reserve(values);
  }

  void AddSection(const tagGCSECT& loaded) {
    const std::uint32_t kind = loaded.identifier;
    const auto place = static_cast<std::uint32_t>(model_->sections.size());
    const auto first_entry = static_cast<std::uint32_t>(model_->entries.size());
    for (const tagGCENTRY& entry : loaded.entries) AddEntry(entry);
    model_->sections.push_back(
        {model_.get(), first_entry, static_cast<std::uint32_t>(loaded.entries.size()), kind,
         place - model_->kind_begin[kind - RUX_SECT_MORVRUX], FirstValue(loaded, RUX_ENTRY_NAME),
         FirstValue(loaded, RUX_ENTRY_ID)});
    for (const tagGCENTRY& entry : loaded.entries) IndexSection(kind, place, entry);
    if (loaded.entries.size() > Records::kFewEntries) IndexEntries(loaded, first_entry);
  }

  void AddEntry(const tagGCENTRY& loaded) {
    std::vector<std::uint32_t>& values = model_->values;
    model_->entries.push_back({loaded.identifier, static_cast<std::uint32_t>(values.size())});
    for (const std::uint32_t value : loaded.values) values.push_back(value);
  }

  // Of the first entry with that identifier that has any.
  static std::uint32_t FirstValue(const tagGCSECT& section, std::uint32_t identifier) {
    for (const tagGCENTRY& entry : section.entries) {
      if (entry.identifier == identifier && !entry.values.empty()) return entry.values.front();
    }
    return Value().index();
  }

  // What a section is found by.
  void IndexSection(std::uint32_t kind, std::uint32_t place, const tagGCENTRY& entry) {
    if (const std::uint32_t* index = OfferedId(entry)) {
      const Value id = model_->tables.Resolve(*index);
      if (id.kind() == RUX_DATA_NUMBER) {
        model_->sections_by_id.Add(kind, NumberKey{id.number()}, place);
      }
    }
    if (const std::uint32_t* index = OfferedName(kind, entry)) {
      AddName(model_->sections_by_name, kind, *index, place);
    }
  }

  void IndexEntries(const tagGCSECT& section, std::uint32_t first_entry) {
    std::uint32_t place = first_entry;
    for (const tagGCENTRY& entry : section.entries) {
      model_->entries_by_identifier.Add(first_entry, NumberKey{entry.identifier}, place);
      AddName(model_->entries_by_name, first_entry, entry.identifier, place);
      ++place;
    }
  }

  // When the index stands for a name.
  void AddName(HashIndex<TextKey>& names, std::uint32_t scope, std::uint32_t index,
               std::uint32_t place) {
    const Value name = model_->tables.Resolve(index);
    if (name.kind() == RUX_DATA_STRING) names.Add(scope, TextKey(name.text()), place);
  }

  std::unique_ptr<Records> model_ = std::make_unique<Records>();
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_CAPTURE_H_
