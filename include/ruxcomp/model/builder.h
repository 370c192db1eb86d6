// Making a read model piece by piece; see model.h.
#ifndef RUXCOMP_MODEL_BUILDER_H_
#define RUXCOMP_MODEL_BUILDER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/model/records.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp {

// For those who have the content of a meta file by other ways than the library: tables and sections
// go in, and Model(std::move(builder)) comes out.
class ModelBuilder {
 public:
  // How much there will be: what goes in then finds its place made.
  void ReserveIndices(std::uint32_t index_class, std::size_t count) {
    model_->tables.Reserve(index_class, count);
  }
  void ReserveSections(std::size_t sections, std::size_t entries, std::size_t values) {
    model_->sections.reserve(sections);
    model_->entries.reserve(entries + 1);
    model_->values.reserve(values);
  }

  // What an index of a symbol table stands for. The first that is said of an index counts.
  void AddText(std::uint32_t index, std::string_view text) { model_->tables.Add(index, text); }
  void AddNumber(std::uint32_t index, std::uint32_t number) { model_->tables.Add(index, number); }

  // The cells of TABLE sections, one table after the other. What is left over is no table.
  void AddCells(const std::uint8_t* cells, std::size_t count) {
    for (; count >= RUX_TABLE_CELLS; count -= RUX_TABLE_CELLS, cells += RUX_TABLE_CELLS) {
      std::copy_n(cells, RUX_TABLE_CELLS, model_->cells.emplace_back().begin());
    }
  }

  // A section (a RUX_SECT_...), then its entries, each with its values behind it.
  void AddSection(std::uint32_t kind) {
    const std::uint32_t none = Value().index();
    model_->sections.push_back({model_.get(), EntryCount(), 0, kind, 0, none, none});
  }
  void AddEntry(std::uint32_t identifier) {
    model_->entries.push_back({identifier, ValueCount()});
    ++model_->sections.back().entry_count;
  }
  void AddValue(std::uint32_t value) { model_->values.push_back(value); }

 private:
  friend class Model;

  using Entry = detail::EntryRecord;
  using Section = detail::SectionRecord;

  std::unique_ptr<const detail::Records> Take() {
    model_->tables.Settle();
    model_->entries.push_back({0, ValueCount()});
    SortSections();
    model_->sections_by_id.Reserve(model_->sections.size());
    model_->sections_by_name.Reserve(model_->sections.size());
    for (std::uint32_t i = 0; i < model_->sections.size(); ++i) IndexSection(i);
    return std::move(model_);
  }

  std::uint32_t EntryCount() const { return static_cast<std::uint32_t>(model_->entries.size()); }
  std::uint32_t ValueCount() const { return static_cast<std::uint32_t>(model_->values.size()); }

  // One kind after the other, the kinds in the order of their numbers.
  void SortSections() {
    std::vector<Section>& sections = model_->sections;
    const auto is_foreign = [](const Section& section) {
      return section.kind - RUX_SECT_MORVRUX >= detail::Records::kKinds;
    };
    sections.erase(std::remove_if(sections.begin(), sections.end(), is_foreign), sections.end());
    std::stable_sort(sections.begin(), sections.end(),
                     [](const Section& a, const Section& b) { return a.kind < b.kind; });
    auto& kind_begin = model_->kind_begin;
    for (const Section& section : sections) ++kind_begin[section.kind - RUX_SECT_MORVRUX + 1];
    std::partial_sum(kind_begin.begin(), kind_begin.end(), kind_begin.begin());
  }

  // What the section is called, and what it and its entries are found by.
  void IndexSection(std::uint32_t place) {
    Section& section = model_->sections[place];
    section.ordinal = place - model_->kind_begin[section.kind - RUX_SECT_MORVRUX];
    const Entry* const entries = model_->entries.data() + section.first_entry;
    const std::uint32_t* first_name = nullptr;
    const std::uint32_t* first_id = nullptr;
    for (const Entry* entry = entries; entry != entries + section.entry_count; ++entry) {
      const std::uint32_t* const value = FirstValue(*entry);
      if (const std::uint32_t* id = OfferedId(entry->identifier, value)) {
        if (first_id == nullptr) first_id = id;
        AddId(section.kind, *id, place);
      }
      if (const std::uint32_t* name = OfferedName(section.kind, entry->identifier, value)) {
        if (first_name == nullptr && name == value) first_name = name;
        AddName(model_->sections_by_name, section.kind, *name, place);
      }
    }
    if (first_name != nullptr) section.name = *first_name;
    if (first_id != nullptr) section.id = *first_id;
    if (section.entry_count > detail::Records::kFewEntries) IndexEntries(section);
  }

  void IndexEntries(const Section& section) {
    const std::uint32_t scope = section.first_entry;
    for (std::uint32_t place = scope; place < scope + section.entry_count; ++place) {
      const std::uint32_t identifier = model_->entries[place].identifier;
      model_->entries_by_identifier.Add(scope, identifier, place);
      AddName(model_->entries_by_name, scope, identifier, place);
    }
  }

  // Null when the entry has none.
  const std::uint32_t* FirstValue(const Entry& entry) const {
    const bool has_values = (&entry)[1].first_value > entry.first_value;
    return has_values ? &model_->values[entry.first_value] : nullptr;
  }

  void AddId(std::uint32_t kind, std::uint32_t index, std::uint32_t place) {
    const Value id = model_->tables.Resolve(index);
    if (id.kind() != RUX_DATA_NUMBER) return;
    model_->sections_by_id.Add(kind, id.number(), place);
  }

  void AddName(detail::HashIndex<detail::TextKey>& names, std::uint32_t scope, std::uint32_t index,
               std::uint32_t place) {
    const Value name = model_->tables.Resolve(index);
    if (name.kind() != RUX_DATA_STRING) return;
    names.Add(scope, name.text(), place);
  }

  std::unique_ptr<detail::Records> model_ = std::make_unique<detail::Records>();
};

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_BUILDER_H_
