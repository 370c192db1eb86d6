// How sections are found: what their entries offer as ID and names, and whether it matches.
#ifndef QUERY_NAME_MATCHER_H_
#define QUERY_NAME_MATCHER_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "backend/symbol_tables.h"
#include "ruxcomp/record_rules.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

// Whether an index stands for the name. The answer is that of resolving the index and comparing
// texts, but each table is searched only once, for the index of the name.
class NameMatcher {
 public:
  explicit NameMatcher(std::string_view name) : name_(name) {}  // the text must outlive it
  bool operator()(std::uint32_t index);

 private:
  const std::string_view name_;
  // The index in each table that was searched; 0, which is no index, when the table lacks the name.
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

// The table index that an entry offers as the ID, or as a name, of a section of that kind; null
// when it offers none.
inline const std::uint32_t* OfferedId(const tagGCENTRY& entry) {
  return ruxcomp::OfferedId(entry.identifier, entry.values.empty() ? nullptr : &entry.values[0]);
}
inline const std::uint32_t* OfferedName(std::uint32_t kind, const tagGCENTRY& entry) {
  return ruxcomp::OfferedName(kind, entry.identifier,
                              entry.values.empty() ? nullptr : &entry.values[0]);
}

}  // namespace ruxcomp::core

#endif  // QUERY_NAME_MATCHER_H_
