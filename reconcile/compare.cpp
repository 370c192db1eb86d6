#include "reconcile/compare.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "lists/list.h"
#include "lists/units.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "reconcile/amount.h"
#include "reconcile/pairing.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "table/cell.h"
#include "table/columns.h"
#include "table/machine_table.h"

namespace rux::reconcile {
namespace {

bool IsOfNumbers(const table::Column& column) {
  return column.entry != nullptr && ruxcomp::language::IsNumericString(column.entry->source);
}

// The texts of a list, as a set; numbers however they are written.
std::set<std::string> SetOf(const std::string& joined) {
  std::set<std::string> texts;
  for (std::size_t begin = 0; begin <= joined.size();) {
    const std::size_t end = std::min(joined.find_first_of(",;", begin), joined.size());
    const std::string text(lists::Trimmed(std::string_view(joined).substr(begin, end - begin)));
    const std::optional<double> number = table::NumberIn(text);
    if (!text.empty()) texts.insert(number ? std::to_string(*number) : text);
    begin = end + 1;
  }
  return texts;
}

class Comparer {
 public:
  Comparer(table::MachineTable table, std::vector<bool> are_chosen, const lists::List& list,
           const Pairing& pairing)
      : result_{std::move(table), list, pairing, std::move(are_chosen), {}},
        name_(pairing.Find(table::kNameColumn)),
        id_(pairing.Find(table::kIdColumn)) {}

  Comparison Run() {
    Match();
    for (std::size_t i = 0; i < result_.list.rows.size(); ++i) CompareListed(i);
    for (std::size_t i = 0; i < result_.table.rows.size(); ++i) {
      if (!is_listed_[i] && result_.are_chosen[i])
        AddRow(DifferenceKind::kExtra, &RowAt(i), nullptr);
    }
    FindUnlisted();
    return std::move(result_);
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  const table::Row& RowAt(std::size_t i) const { return result_.table.rows[i]; }

  static std::string NameIn(const lists::ListRow& listed, const ColumnPair* pair) {
    return pair == nullptr ? "" : listed.CellIn(pair->place);
  }

  std::optional<std::uint32_t> IdIn(const lists::ListRow& listed) const {
    const std::optional<Amount> id = AmountIn(NameIn(listed, id_));
    if (!id || !id->unit.empty()) return std::nullopt;
    return NumberToStore(id->number, "", {});
  }

  // Finds the section of each row, by NAME where that is possible.
  void Match() {
    std::unordered_map<std::string, std::size_t> by_name;
    std::unordered_map<std::uint32_t, std::size_t> by_id;
    for (std::size_t i = 0; i < result_.table.rows.size(); ++i) {
      const ruxcomp::Section& section = RowAt(i).subject.section;
      by_name.emplace(section.name(), i);
      if (section.id()) by_id.emplace(*section.id(), i);
    }
    const std::vector<lists::ListRow>& listed = result_.list.rows;
    matches_.assign(listed.size(), kNone);
    is_listed_.assign(result_.table.rows.size(), false);
    for (std::size_t i = 0; i < listed.size() && name_ != nullptr; ++i) {
      const auto found = by_name.find(NameIn(listed[i], name_));
      if (found != by_name.end()) Take(i, found->second);
    }
    for (std::size_t i = 0; i < listed.size(); ++i) {
      const std::optional<std::uint32_t> id = IdIn(listed[i]);
      if (matches_[i] != kNone || !id) continue;
      const auto found = by_id.find(*id);
      const bool is_free = found != by_id.end() && (name_ == nullptr || !is_listed_[found->second]);
      if (is_free) Take(i, found->second);
    }
  }

  void Take(std::size_t listed, std::size_t row) {
    matches_[listed] = row;
    is_listed_[row] = true;
  }

  void CompareListed(std::size_t i) {
    const lists::ListRow& listed = result_.list.rows[i];
    if (matches_[i] == kNone) return AddRow(DifferenceKind::kMissing, nullptr, &listed);
    if (!result_.are_chosen[matches_[i]]) return;
    const table::Row& row = RowAt(matches_[i]);
    if (!compared_.insert(matches_[i]).second)
      return AddRow(DifferenceKind::kDuplicate, &row, &listed);
    ++result_.compared;
    CompareCells(row, listed);
  }

  void CompareCells(const table::Row& row, const lists::ListRow& listed) {
    bool has_limits = false;
    ForEachCell(row, listed, [&](const ColumnPair& pair, const table::Cell& ours) {
      const std::string& theirs = listed.CellIn(pair.place);
      has_limits |= pair.column.is_limit() && !(ours.empty() && lists::IsNothing(theirs));
      const std::optional<DifferenceKind> kind = KindOf(pair, row, ours, listed);
      if (kind) AddCell(*kind, pair, row, ours, listed);
    });
    const machine::Quantity& quantity = row.subject.quantity;
    if (has_limits && (!quantity.unit || !quantity.is_signed)) ++result_.stored;
  }

  // use(pair, ours) for each column in which the row or the listed one has something.
  template <class Use>
  void ForEachCell(const table::Row& row, const lists::ListRow& listed, Use use) {
    static const table::Cell empty;
    auto ours = row.cells.begin();
    const auto use_ours_before = [&](std::size_t place) {
      for (; ours != row.cells.end(); ++ours) {
        const ColumnPair& pair = result_.pairing.columns[ours->column];
        if (pair.place >= place) return;
        use(pair, ours->cell);
      }
    };
    for (const lists::ListCell& theirs : listed.cells) {
      use_ours_before(theirs.column);
      const ColumnPair* const pair = result_.pairing.FindPlace(theirs.column);
      if (pair == nullptr) continue;
      const bool is_of_both =
          ours != row.cells.end() && &result_.pairing.columns[ours->column] == pair;
      use(*pair, is_of_both ? (ours++)->cell : empty);
    }
    use_ours_before(kNone);
  }

  // None when both cells are the same.
  std::optional<DifferenceKind> KindOf(const ColumnPair& pair, const table::Row& row,
                                       const table::Cell& ours,
                                       const lists::ListRow& listed) const {
    const std::string& theirs = listed.CellIn(pair.place);
    if (IsOfNumbers(pair.column)) return KindOfNumber(pair, row, ours, listed);
    if (table::TextOf(ours) == theirs) return std::nullopt;
    bool is_same = false;
    if (pair.column.name == table::kUnitColumn) {
      is_same = ours.empty() || lists::IsNothing(theirs) || AreSameUnits(ours, theirs);
    } else if (ours.is_list) {
      is_same = SetOf(table::TextOf(ours)) == SetOf(theirs);
    }
    return is_same ? std::nullopt : std::optional(DifferenceKind::kDiffers);
  }

  // Amounts in mV are compared with amounts in V.
  static bool AreSameUnits(const table::Cell& ours, const std::string& theirs) {
    return lists::UnitFactor(theirs, ours.texts.front()).has_value();
  }

  std::optional<DifferenceKind> KindOfNumber(const ColumnPair& pair, const table::Row& row,
                                             const table::Cell& ours,
                                             const lists::ListRow& listed) const {
    const std::string& theirs = listed.CellIn(pair.place);
    if (lists::IsNothing(theirs))
      return ours.empty() ? std::nullopt : std::optional(DifferenceKind::kDiffers);
    const std::optional<Amount> amount = AmountIn(theirs);
    if (!amount) return DifferenceKind::kIncomparable;
    const machine::Quantity quantity = QuantityFor(pair, row);
    const std::optional<double> wanted =
        StoredAmount(*amount, UnitOf(result_, pair, listed), quantity);
    if (!wanted) return DifferenceKind::kIncomparable;
    if (ours.empty()) return DifferenceKind::kDiffers;
    const bool is_same = IsWithin(*ours.number, *wanted, pair.tolerance, quantity) ||
                         NumberToStore(*wanted, theirs, quantity) == ours.number;
    return is_same ? std::nullopt : std::optional(DifferenceKind::kDiffers);
  }

  void FindUnlisted() {
    const ruxcomp::language::SectionKind& kind = result_.table.kind;
    for (const ruxcomp::language::CompiledEntry& entry :
         ruxcomp::language::CompiledEntriesOf(kind)) {
      const table::Column column = table::ColumnFor(kind, entry.keyword);
      if (!column.is_limit() || result_.pairing.Find(column.name) != nullptr) continue;
      if (HasChosen(column)) result_.unlisted.push_back(column.name);
    }
  }

  // Whether a chosen section has that entry.
  bool HasChosen(const table::Column& column) const {
    for (std::size_t i = 0; i < result_.table.rows.size(); ++i) {
      if (result_.are_chosen[i] && table::EntryOf(RowAt(i).subject, column)) return true;
    }
    return false;
  }

  void AddRow(DifferenceKind kind, const table::Row* row, const lists::ListRow* listed) {
    Difference difference{kind, row, listed, "", std::nullopt};
    if (row != nullptr) {
      difference.name = row->subject.section.name();
      difference.id = row->subject.section.id();
      difference.place = PlaceOf(*row, "");
    } else {
      difference.name = NameIn(*listed, name_);
      difference.id = IdIn(*listed);
    }
    result_.differences.push_back(std::move(difference));
  }

  void AddCell(DifferenceKind kind, const ColumnPair& pair, const table::Row& row,
               const table::Cell& ours, const lists::ListRow& listed) {
    AddRow(kind, &row, &listed);
    Difference& difference = result_.differences.back();
    difference.column = &pair;
    difference.ours = ours;
    difference.theirs = listed.CellIn(pair.place);
    difference.place = PlaceOf(row, pair.column.name);
  }

  // Of the entry with that key; of the section without one.
  std::optional<machine::Place> PlaceOf(const table::Row& row, std::string_view key) const {
    const table::Subject& subject = row.subject;
    return subject.machine.PlaceOf(subject.kind, subject.ordinal, key);
  }

  Comparison result_;
  const ColumnPair* const name_;
  const ColumnPair* const id_;
  std::vector<std::size_t> matches_;  // of the list's rows, in the table; kNone: none
  std::vector<bool> is_listed_;       // of the table's rows
  std::set<std::size_t> compared_;    // of them
};

}  // namespace

std::size_t Comparison::CountOf(DifferenceKind kind) const {
  return static_cast<std::size_t>(
      std::count_if(differences.begin(), differences.end(),
                    [&](const Difference& difference) { return difference.kind == kind; }));
}

machine::Quantity QuantityFor(const ColumnPair& pair, const table::Row& row) {
  return pair.column.is_limit() ? row.subject.quantity : machine::Quantity();
}

std::string UnitOf(const Comparison& comparison, const ColumnPair& pair,
                   const lists::ListRow& listed) {
  const ColumnPair* units = comparison.pairing.Find(table::kUnitColumn);
  if (!pair.unit.empty() || units == nullptr) return pair.unit;
  const std::string& unit = listed.CellIn(units->place);
  return lists::IsNothing(unit) ? "" : unit;
}

Comparison Compare(table::MachineTable table, std::vector<bool> are_chosen, const lists::List& list,
                   const Pairing& pairing) {
  return Comparer(std::move(table), std::move(are_chosen), list, pairing).Run();
}

}  // namespace rux::reconcile
