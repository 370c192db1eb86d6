// Consecutive rows of a constexpr table, and lookups in one.
#ifndef RUXCOMP_LANGUAGE_ROWS_H_
#define RUXCOMP_LANGUAGE_ROWS_H_

#include <cstddef>

namespace ruxcomp::language {

template <class Row>
class Rows {
 public:
  constexpr Rows() = default;
  constexpr Rows(const Row* first, std::size_t count) : first_(first), count_(count) {}

  constexpr const Row* begin() const { return first_; }
  constexpr const Row* end() const { return first_ + count_; }
  constexpr std::size_t size() const { return count_; }
  constexpr bool empty() const { return count_ == 0; }
  constexpr const Row& operator[](std::size_t i) const { return first_[i]; }

 private:
  const Row* first_ = nullptr;
  std::size_t count_ = 0;
};

// Where the first row that passes the test is; the count of rows when none does. Compilers that
// check for undefined behaviour do not compare addresses in constants; they do compare places.
template <class Row, std::size_t Count, class Test>
constexpr std::size_t PlaceOfRow(const Row (&table)[Count], Test test) {
  std::size_t place = 0;
  while (place < Count && !test(table[place])) ++place;
  return place;
}

template <class Row, std::size_t Count, class Test>
constexpr bool HasRow(const Row (&table)[Count], Test test) {
  return PlaceOfRow(table, test) < Count;
}

// The first row that passes the test; null when none does.
template <class Row, std::size_t Count, class Test>
constexpr const Row* FindRow(const Row (&table)[Count], Test test) {
  const std::size_t place = PlaceOfRow(table, test);
  return place < Count ? table + place : nullptr;
}

// The rows that pass the test. They must be neighbours; see AreNeighbours.
template <class Row, std::size_t Count, class Test>
constexpr Rows<Row> RowsThat(const Row (&table)[Count], Test test) {
  const std::size_t first = PlaceOfRow(table, test);
  std::size_t end = first;
  while (end < Count && test(table[end])) ++end;
  return {table + first, end - first};
}

// Whether all rows with equal keys are neighbours.
template <class Row, std::size_t Count, class Key>
constexpr bool AreNeighbours(const Row (&table)[Count], Key key) {
  for (std::size_t i = 1; i < Count; ++i) {
    if (key(table[i]) == key(table[i - 1])) continue;
    for (std::size_t j = 0; j < i; ++j) {
      if (key(table[i]) == key(table[j])) return false;
    }
  }
  return true;
}

// Whether no two rows have equal keys.
template <class Row, std::size_t Count, class Key>
constexpr bool AreDistinct(const Row (&table)[Count], Key key) {
  for (std::size_t i = 1; i < Count; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (key(table[i]) == key(table[j])) return false;
    }
  }
  return true;
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_ROWS_H_
