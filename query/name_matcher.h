// A name or number that is looked for among table indices.
#ifndef QUERY_NAME_MATCHER_H_
#define QUERY_NAME_MATCHER_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "backend/symbol_tables.h"

// Whether an index stands for the name: the answer of resolving each index and comparing the texts,
// but every table is searched once, for the index that the name has in it.
class NameMatcher {
 public:
  explicit NameMatcher(std::string_view name) : name_(name) {}  // which outlives it
  bool operator()(std::uint32_t index);

 private:
  const std::string_view name_;
  // The index in each table once it was searched; 0, which is none, where it is not there.
  std::array<std::optional<std::uint32_t>, kSymbolTableCount> indices_;
};

// The same for a number.
class NumberMatcher {
 public:
  explicit NumberMatcher(std::uint32_t number) : number_(number) {}
  bool operator()(std::uint32_t index);

 private:
  const std::uint32_t number_;
  std::optional<std::uint32_t> index_;
};

#endif  // QUERY_NAME_MATCHER_H_
