// Making a read model piece by piece; see model.h.
#ifndef RUXCOMP_MODEL_BUILDER_H_
#define RUXCOMP_MODEL_BUILDER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/words.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/model/tables.h"

namespace ruxcomp {

// For programs that have the content of a meta file in a form other than its bytes: tables and
// sections go in, and Model(std::move(builder)) comes out.
class ModelBuilder {
 public:
  // How much there will be, so that room for it is made once.
  void ReserveIndices(std::uint32_t index_class, std::size_t count) {
    model_->tables.Reserve(index_class, count);
  }
  void ReserveSections(std::size_t sections, std::size_t entries, std::size_t values) {
    model_->sections.Reserve(sections);
    words_.reserve(((sections + entries) * detail::kHeadWords + values) * language::kWordSize);
  }

  // What an index of a symbol table stands for. The first one given for an index counts.
  void AddText(std::uint32_t index, std::string_view text) {
    if (text.size() >= detail::TableItem::kNumber - texts_.size()) return;  // more than 4 GiB
    model_->tables.Add(index, {static_cast<std::uint32_t>(text.size()),
                               static_cast<std::uint32_t>(texts_.size())});
    texts_.append(text).push_back('\0');
  }
  void AddNumber(std::uint32_t index, std::uint32_t number) {
    model_->tables.Add(index, {number, detail::TableItem::kNumber});
  }

  // The cells of TABLE sections, one table after the other. Cells left over are ignored.
  void AddCells(const std::uint8_t* cells, std::size_t count) {
    cells_.append(reinterpret_cast<const char*>(cells), count - count % RUX_TABLE_CELLS);
  }

  // A section (a RUX_SECT_...), then its entries, each with its values: table indices, in anything
  // that has size() and an operator [].
  void AddSection(std::uint32_t kind) {
    section_ = words_.size();
    model_->sections.Add(kind, static_cast<std::uint32_t>(section_ / language::kWordSize));
    language::AppendWords(words_, {kind, 0});
  }
  template <class Values>
  void AddEntry(std::uint32_t identifier, const Values& values) {
    const auto count = static_cast<std::uint32_t>(values.size());
    language::AppendWords(words_, {identifier, count});
    for (std::uint32_t i = 0; i < count; ++i) language::AppendWord(words_, values[i]);
    const std::size_t entries = section_ + language::kWordSize;
    language::StoreWord(words_, entries, language::LoadWord(&words_[entries]) + 1);
  }

 private:
  friend class Model;

  std::unique_ptr<const detail::Records> Take() {
    const std::size_t texts = words_.size();
    const std::size_t cells = texts + texts_.size();
    model_->bytes.Keep(std::move(words_.append(texts_).append(cells_)));
    model_->cells = model_->bytes.view().substr(cells);
    model_->Settle(texts);
    return std::move(model_);
  }

  std::unique_ptr<detail::Records> model_ = std::make_unique<detail::Records>();
  // The bytes of the model: what sections and entries are in a meta file, then texts that zeros
  // end, then cells.
  std::string words_;
  std::string texts_;
  std::string cells_;
  std::size_t section_ = 0;  // where the last one begins
};

}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_BUILDER_H_
