// The symbol tables of the read model; see model.h.
#ifndef RUXCOMP_MODEL_TABLES_H_
#define RUXCOMP_MODEL_TABLES_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp::detail {

// Copies of texts, each with a zero byte after it. They do not move.
class TextArena {
 public:
  std::string_view Add(std::string_view text) {
    const std::size_t size = text.size() + 1;
    if (size > left_) {
      left_ = std::max(kChunk, size);
      next_ = chunks_.emplace_back(std::make_unique<char[]>(left_)).get();
    }
    const char* const copy = next_;
    next_ = std::copy(text.begin(), text.end(), next_) + 1;  // the zero byte is there already
    left_ -= size;
    return {copy, text.size()};
  }

 private:
  static constexpr std::size_t kChunk = std::size_t{64} << 10;

  std::vector<std::unique_ptr<char[]>> chunks_;
  char* next_ = nullptr;
  std::size_t left_ = 0;
};

// A symbol table turned round: what each of its indices stands for.
class Table {
 public:
  void Reserve(std::size_t count) { dense_.resize(std::min(count, language::kMostOrdinals)); }

  // make() gives the value of an index; the first that comes in for one counts.
  template <class Make>
  void Add(std::uint32_t index, Make make) {
    const std::size_t ordinal = OrdinalOf(index);
    if (ordinal >= dense_.size()) {
      strays_.push_back(make());
    } else if (dense_[ordinal].index() != index) {
      dense_[ordinal] = make();
    }
  }

  // Once all are in.
  void Settle() { std::stable_sort(strays_.begin(), strays_.end(), IsLess); }

  // Of no kind when no key has the index.
  Value At(std::uint32_t index) const noexcept {
    const std::size_t ordinal = OrdinalOf(index);
    if (ordinal < dense_.size() && dense_[ordinal].index() == index) return dense_[ordinal];
    const auto stray = std::lower_bound(strays_.begin(), strays_.end(), Value(index), IsLess);
    return stray != strays_.end() && stray->index() == index ? *stray : Value(index);
  }

 private:
  static bool IsLess(const Value& a, const Value& b) noexcept { return a.index() < b.index(); }

  // A table of n keys has the indices up to n, except where a file repeats keys or is damaged: what
  // lies beyond is kept apart, so that no index is taken for an amount of memory.
  std::vector<Value> dense_;   // by ordinal
  std::vector<Value> strays_;  // by index
};

// All of them.
class Tables {
 public:
  void Reserve(std::uint32_t index_class, std::size_t count) {
    if (Table* table = Of(index_class)) table->Reserve(count);
  }
  void Add(std::uint32_t index, std::string_view text) {
    if (Table* table = Of(index)) table->Add(index, [&] { return Value(index, texts_.Add(text)); });
  }
  void Add(std::uint32_t index, std::uint32_t number) {
    if (Table* table = Of(index)) table->Add(index, [&] { return Value(index, number); });
  }
  void Settle() {
    for (Table& table : tables_) table.Settle();
  }

  // What an index stands for: what GetTblData answers.
  Value Resolve(std::uint32_t index) const noexcept {
    if (IsImmediate(index)) return {index, OrdinalOf(index)};
    const std::size_t table = index >> language::kClassShift;
    return table < tables_.size() ? tables_[table].At(index) : Value(index);
  }

 private:
  Table* Of(std::uint32_t index) {
    const std::size_t table = index >> language::kClassShift;
    return table < tables_.size() ? &tables_[table] : nullptr;
  }

  std::array<Table, (RUX_CLASS_Small >> language::kClassShift)>
      tables_;  // by class; most are empty
  TextArena texts_;
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_TABLES_H_
