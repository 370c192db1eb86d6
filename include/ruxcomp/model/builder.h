// Making a read model piece by piece; see model.h.
#ifndef RUXCOMP_MODEL_BUILDER_H_
#define RUXCOMP_MODEL_BUILDER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <string>
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
    model_->entries.reserve(entries);
    model_->words.Reserve(2 * entries + values);
  }

  // What an index of a symbol table stands for. The first that is said of an index counts.
  void AddText(std::uint32_t index, std::string_view text) { model_->tables.Add(index, text); }
  void AddNumber(std::uint32_t index, std::uint32_t number) { model_->tables.Add(index, number); }

  // The cells of TABLE sections, one table after the other. Cells left over are ignored.
  void AddCells(const std::uint8_t* cells, std::size_t count) {
    for (; count >= RUX_TABLE_CELLS; count -= RUX_TABLE_CELLS, cells += RUX_TABLE_CELLS) {
      std::copy_n(cells, RUX_TABLE_CELLS, model_->cells.emplace_back().begin());
    }
  }

  // A section (a RUX_SECT_...), then its entries, each with its values: table indices, in anything
  // that has size() and an operator [].
  void AddSection(std::uint32_t kind) {
    const std::uint32_t none = Value().index();
    model_->sections.push_back({model_.get(), EntryCount(), 0, kind, 0, none, none});
  }
  template <class Values>
  void AddEntry(std::uint32_t identifier, const Values& values) {
    const std::size_t begin = model_->words.size();
    Word* word = model_->words.Add(2 + values.size());
    word++->Store(identifier);
    word++->Store(static_cast<std::uint32_t>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) word++->Store(values[i]);
    AddEntryAt(begin);
  }

  // Instead: entries as they are in the bytes of a meta file, which the model keeps. The offset is
  // that of the identifier, a multiple of a word; all values are in the file.
  std::string_view KeepFile(std::string file) {
    model_->words = Words(std::move(file));
    // At most; memory that is only reserved takes none.
    model_->entries.reserve(model_->words.size() / 2);
    return model_->words.bytes();
  }
  void AddKeptEntry(std::size_t offset) { AddEntryAt(offset / sizeof(Word)); }

 private:
  friend class Model;

  using Section = detail::SectionRecord;
  using EntryRecord = detail::EntryRecord;
  using Word = detail::Word;
  using Words = detail::Words;

  std::unique_ptr<const detail::Records> Take() {
    model_->tables.Settle();
    SortSections();
    model_->sections_by_id.Reserve(model_->sections.size());
    model_->sections_by_name.Reserve(model_->sections.size());
    for (std::uint32_t i = 0; i < model_->sections.size(); ++i) IndexSection(i);
    return std::move(model_);
  }

  std::uint32_t EntryCount() const { return static_cast<std::uint32_t>(model_->entries.size()); }

  void AddEntryAt(std::size_t begin) {
    const Word* const words = model_->words.data() + begin;
    const std::uint32_t first = words[1].Load() > 0 ? words[2].Load() : Value().index();
    model_->entries.push_back({static_cast<std::uint32_t>(begin), words[0].Load(), first});
    ++model_->sections.back().entry_count;
  }

  // One kind after the other, the kinds in the order of their numbers.
  void SortSections() {
    auto& kind_begin = model_->kind_begin;
    const auto kind_of = [](const Section& section) {
      return std::min<std::size_t>(section.kind - RUX_SECT_MORVRUX, detail::Records::kKinds);
    };
    for (const Section& section : model_->sections) {
      if (kind_of(section) < detail::Records::kKinds) ++kind_begin[kind_of(section) + 1];
    }
    std::partial_sum(kind_begin.begin(), kind_begin.end(), kind_begin.begin());
    auto place = kind_begin;  // of the next one of each kind; foreign ones get none
    std::vector<Section> sorted(kind_begin.back());
    for (const Section& section : model_->sections) {
      if (kind_of(section) < detail::Records::kKinds) sorted[place[kind_of(section)]++] = section;
    }
    model_->sections = std::move(sorted);
  }

  // What the section is called, and what it and its entries are found by.
  void IndexSection(std::uint32_t place) {
    Section& section = model_->sections[place];
    section.ordinal = place - model_->kind_begin[section.kind - RUX_SECT_MORVRUX];
    const EntryRecord* const entries = model_->entries.data() + section.first_entry;
    section.name = FirstValue(entries, section.entry_count, RUX_ENTRY_NAME);
    section.id = FirstValue(entries, section.entry_count, RUX_ENTRY_ID);
    for (std::uint32_t i = 0; i < section.entry_count; ++i) {
      const std::uint32_t* const value = HasValue(entries[i]) ? &entries[i].first_value : nullptr;
      if (const auto* id = OfferedId(entries[i].identifier, value)) {
        AddId(section.kind, *id, place);
      }
      if (const auto* name = OfferedName(section.kind, entries[i].identifier, value)) {
        AddName(model_->sections_by_name, section.kind, *name, place);
      }
    }
    if (section.entry_count > detail::Records::kFewEntries) IndexEntries(section);
  }

  // Of the first entry with that identifier that has any.
  std::uint32_t FirstValue(const EntryRecord* entries, std::uint32_t count,
                           std::uint32_t identifier) const {
    for (; count > 0; --count, ++entries) {
      if (entries->identifier == identifier && HasValue(*entries)) return entries->first_value;
    }
    return Value().index();
  }

  // Also true of one that a damaged file gives the index that stands for nothing.
  bool HasValue(const EntryRecord& entry) const {
    return entry.first_value != Value().index() || model_->WordsOf(entry)[1].Load() > 0;
  }

  void IndexEntries(const Section& section) {
    const std::uint32_t scope = section.first_entry;
    for (std::uint32_t place = scope; place < scope + section.entry_count; ++place) {
      const std::uint32_t identifier = model_->entries[place].identifier;
      model_->entries_by_identifier.Add(scope, identifier, place);
      AddName(model_->entries_by_name, scope, identifier, place);
    }
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
