// The symbol tables of the read model; see model.h.
#ifndef RUXCOMP_MODEL_TABLES_H_
#define RUXCOMP_MODEL_TABLES_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp::detail {

// What an index stands for: nothing, until something is said of it.
struct TableItem {
  static constexpr std::uint32_t kNumber = 0xFFFFFFFE;
  static constexpr std::uint32_t kNothing = 0xFFFFFFFF;

  bool is_said() const noexcept { return text != kNothing; }

  std::uint32_t number = language::kNoNumber;  // of a text: its length
  std::uint32_t text = kNothing;               // where it begins; kNumber when it is a number
};

// All tables, turned round: what each of their indices stands for.
class Tables {
 public:
  static constexpr std::size_t kTables = RUX_CLASS_Small >> language::kClassShift;
  static_assert(kTables <= RUX_CLASS_ValueType >> language::kClassShift &&
                    kTables <= RUX_CLASS_Operator >> language::kClassShift,
                "the classes of immediates come after those with tables");

  struct Row {
    const TableItem* items = nullptr;
    std::size_t size = 0;
  };

  // How many indices of the class there will be: they are looked up by their ordinals. Whoever
  // knows what each stands for may fill them; null when the class has no table.
  TableItem* Reserve(std::uint32_t index_class, std::size_t count) {
    const std::size_t table = index_class >> language::kClassShift;
    if (table >= kTables) return nullptr;
    tables_[table].resize(std::min(count, language::kMostOrdinals));
    return tables_[table].data();
  }
  // The first that is said of an index counts.
  void Add(std::uint32_t index, TableItem item) {
    const std::size_t table = index >> language::kClassShift;
    if (table >= kTables) return;
    if (OrdinalOf(index) >= tables_[table].size()) {
      strays_.push_back({index, item});
    } else if (TableItem& own = tables_[table][OrdinalOf(index)]; !own.is_said()) {
      own = item;
    }
  }
  // Once all are in; `texts` is what the places of the texts count from.
  void Settle(const char* texts) {
    texts_ = texts;
    std::stable_sort(strays_.begin(), strays_.end(),
                     [](const Stray& a, const Stray& b) { return a.index < b.index; });
    for (std::size_t i = 0; i < kTables; ++i) rows_[i] = {tables_[i].data(), tables_[i].size()};
  }

  // What Resolve reads of nearly every index, by class.
  const std::array<Row, kTables>& rows() const noexcept { return rows_; }
  const char* texts() const noexcept { return texts_; }

  // What GetTblData answers: of no kind when no key has the index.
  Value Resolve(std::uint32_t index) const noexcept {
    const std::size_t table = index >> language::kClassShift;
    const std::uint32_t ordinal = OrdinalOf(index);
    if (table < kTables) {
      const Row& row = rows_[table];
      return ordinal < row.size ? ValueOf(index, row.items[ordinal]) : StrayValue(index);
    }
    return IsImmediate(index) ? Value(index, ordinal) : Value(index);
  }

 private:
  struct Stray {
    std::uint32_t index;
    TableItem item;
  };

  Value ValueOf(std::uint32_t index, TableItem item) const noexcept {
    return {index, item.number, item.text < TableItem::kNumber ? texts_ + item.text : nullptr};
  }

  [[gnu::cold, gnu::noinline]] Value StrayValue(std::uint32_t index) const noexcept {
    const auto stray = std::lower_bound(
        strays_.begin(), strays_.end(), index,
        [](const Stray& each, std::uint32_t sought) { return each.index < sought; });
    const bool is_there = stray != strays_.end() && stray->index == index;
    return is_there ? ValueOf(index, stray->item) : Value(index);
  }

  const char* texts_ = nullptr;
  std::array<Row, kTables> rows_;  // of what is below, by class; most are empty
  // A table of n keys has the indices up to n, except where a file repeats keys or is damaged: what
  // lies beyond is kept apart, so that no index is taken for an amount of memory.
  std::array<std::vector<TableItem>, kTables> tables_;
  std::vector<Stray> strays_;  // by index
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_TABLES_H_
