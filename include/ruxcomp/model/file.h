// Opening the bytes of a meta file as a read model; see model.h.
#ifndef RUXCOMP_MODEL_FILE_H_
#define RUXCOMP_MODEL_FILE_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/meta_walk.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/model/tables.h"
#include "ruxcomp/verify/meta_rules.h"
#include "ruxcomp/verify/text_set.h"

namespace ruxcomp::detail {

// Verifies the bytes of a model, and notes on the way where everything is.
class Opening : public verify::MetaRules {
 public:
  explicit Opening(Records& model) : model_(model) {}

  std::optional<file::Fault> Go() {
    file::Faults faults;
    const file::FileHeader header = file::WalkMeta(model_.bytes.view(), faults, *this).header;
    if (!faults.empty()) return faults.list().front();
    model_.info = {header.version, header.creation_time};
    for (const file::MetaTableView& table : tables().all()) Take(table);
    if (!cut_text_.empty()) KeepCutText();
    model_.cells = model_.bytes.view().substr(cells_.offset, cells_.size);
    model_.Settle();
    return std::nullopt;
  }

  void OnSectionBegin(file::Cursor& cursor, const file::MetaSectionView& section) {
    MetaRules::OnSectionBegin(cursor, section);
    model_.sections.Add(section.identifier,
                        static_cast<std::uint32_t>(section.offset / file::kWordSize));
  }

 private:
  void Take(const file::MetaTableView& table) {
    switch (table.base) {
      case language::CLASS_TableData:
        cells_ = {OffsetOf(table.cells), table.cells.size()};
        return;
      case language::CLASS_Dword:
        return TakeNumbers(table);
      case language::CLASS_Property:
        return TakeStated(table);
      default:
        return TakeTexts(table);
    }
  }

  void TakeNumbers(const file::MetaTableView& table) {
    TableItem* item = model_.tables.Reserve(table.base, table.numbers.size());
    for (std::size_t i = 0; i < table.numbers.size(); ++i) {
      *item++ = {table.numbers[i], TableItem::kNumber};
    }
  }

  void TakeTexts(const file::MetaTableView& table) {
    TableItem* item = model_.tables.Reserve(table.base, table.ends.size());
    auto begin = static_cast<std::uint32_t>(OffsetOf(table.block));
    const std::uint32_t block = begin;
    for (const std::uint32_t end : table.ends) {
      *item++ = {block + end - begin, begin};
      begin = block + end + 1;
    }
  }

  // What gcInit reads, so many bytes as the table states. Of the texts that are repeated, which
  // only properties are, the first one has an index.
  void TakeStated(const file::MetaTableView& table) {
    const std::string_view texts = table.stated;
    const auto count = std::count(texts.begin(), texts.end(), '\0');
    model_.tables.Reserve(table.base, static_cast<std::size_t>(count) + 1);
    verify::TextSet known;
    std::uint32_t index = table.base;
    for (std::size_t begin = 0; begin < texts.size(); ++index) {
      const std::size_t end = std::min(texts.find('\0', begin), texts.size());
      const std::string_view text = texts.substr(begin, end - begin);
      begin = end + 1;
      if (!known.Insert(text)) continue;
      if (*(text.data() + text.size()) == '\0') {
        AddText(index, text);
      } else {
        cut_index_ = index;
        cut_text_ = text;
      }
    }
  }

  void AddText(std::uint32_t index, std::string_view text) { AddText(index, text, OffsetOf(text)); }
  void AddText(std::uint32_t index, std::string_view text, std::size_t offset) {
    model_.tables.Add(
        index, {static_cast<std::uint32_t>(text.size()), static_cast<std::uint32_t>(offset)});
  }

  // The stated length may end within a text. Copied to the end, it has a zero after it.
  void KeepCutText() {
    std::string copy(model_.bytes.view());
    AddText(cut_index_, cut_text_, copy.size());
    copy += cut_text_;
    model_.bytes.Keep(std::move(copy));
  }

  std::size_t OffsetOf(std::string_view part) const {
    return static_cast<std::size_t>(part.data() - model_.bytes.view().data());
  }

  std::uint32_t cut_index_ = 0;
  std::string_view cut_text_;
  file::Extent cells_;
  Records& model_;
};

// A model of the bytes that keep() puts into it. Null when that or the bytes have a fault; `fault`,
// unless null, gets it.
template <class Keep>
std::unique_ptr<const Records> Open(Keep keep, file::Fault* fault) {
  auto model = std::make_unique<Records>();
  std::optional<file::Fault> found = keep(model->bytes);
  if (!found) found = Opening(*model).Go();
  if (!found) return model;
  if (fault != nullptr) *fault = std::move(*found);
  return nullptr;
}

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_FILE_H_
