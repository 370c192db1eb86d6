#include "diff/compare.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "diff/kind_matcher.h"
#include "diff/matching.h"
#include "diff/order.h"
#include "diff/placed.h"
#include "diff/section_comparer.h"
#include "machine/machine.h"
#include "machine/origins.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/records.h"
#include "support/number_text.h"

namespace rux::diff {
namespace {

std::string OrdinalText(std::uint32_t ordinal) { return fmt::format("@{}", ordinal); }

class Comparison {
 public:
  Comparison(const machine::Machine& before, const machine::Machine& after)
      : before_(before),
        after_(after),
        matching_(before.model(), after.model()),
        sections_(matching_, changes_) {}

  std::vector<Change> Run() {
    for (const language::SectionKind& kind : language::kSectionKinds) {
      if (kind.naming == language::Naming::kByKeys) {
        CompareKeys(kind);
      } else if (kind.IsCompiled()) {
        CompareKind(kind);
      }
    }
    if (before_.origins() != nullptr && after_.origins() != nullptr) CompareWords();
    return std::move(changes_);
  }

 private:
  // A project file that only one of them has holds for both: the other was moved or copied away
  // from it, and its numbers are the same.
  const machine::Machine& RulesFor(const machine::Machine& machine) const {
    const bool is_before = &machine == &before_;
    return is_before == machine.has_quantities() ? before_ : after_;
  }

  PlacedSection At(const machine::Machine& machine, const language::SectionKind& kind,
                   std::uint32_t ordinal) const {
    return {&machine, &RulesFor(machine), &kind, ordinal,
            machine.model().sections(kind.compiled)[ordinal]};
  }

  std::vector<PlacedEntry> EntriesOf(const machine::Machine& machine,
                                     const language::SectionKind& kind) const {
    std::vector<PlacedEntry> entries;
    const auto count = static_cast<std::uint32_t>(machine.model().sections(kind.compiled).size());
    for (std::uint32_t i = 0; i < count; ++i) {
      const PlacedSection section = At(machine, kind, i);
      for (const ruxcomp::Entry entry : section.section.entries())
        entries.push_back({section, entry});
    }
    return entries;
  }

  void CompareKeys(const language::SectionKind& kind) {
    sections_.CompareKeys(EntriesOf(before_, kind), EntriesOf(after_, kind));
  }

  void CompareKind(const language::SectionKind& kind) {
    const KindMatch& match = matching_.Of(kind);
    for (const std::uint32_t ordinal : match.removed) AddOne(At(before_, kind, ordinal), false);
    auto added = match.added.begin();
    for (const Pair& pair : match.pairs) {
      for (; added != match.added.end() && *added < pair.after; ++added)
        AddOne(At(after_, kind, *added), true);
      ComparePair(At(before_, kind, pair.before), At(after_, kind, pair.after));
    }
    for (; added != match.added.end(); ++added) AddOne(At(after_, kind, *added), true);
    CompareOwners(kind, match);
    CompareOrder(kind, match.pairs);
  }

  void AddOne(const PlacedSection& section, bool is_new) {
    const bool has_id = section.section.id().has_value();
    const ClassId added = has_id ? ClassId::kSectionAdded : ClassId::kNamedSectionAdded;
    Change change{&RowOf(is_new ? added : RowOf(added).mirror), section.kind};
    (is_new ? change.after : change.before) = section.SideFor();
    changes_.push_back(std::move(change));
  }

  Change& Add(ClassId id, const PlacedSection& before, const PlacedSection& after,
              std::string_view key = {}) {
    changes_.push_back(
        {&RowOf(id), before.kind, std::string(key), {}, before.SideFor(key), after.SideFor(key)});
    return changes_.back();
  }

  void ComparePair(const PlacedSection& before, const PlacedSection& after) {
    if (before.section.name() != after.section.name()) {
      Change& change =
          Add(ClassId::kRenamed, before, after, language::KeywordOf(language::ENTRY_NAME));
      change.before.text = change.before.name;
      change.after.text = change.after.name;
    }
    if (before.section.id() != after.section.id()) {
      Change& change =
          Add(ClassId::kIdChanged, before, after, language::KeywordOf(language::ENTRY_ID));
      const auto text = [](std::optional<std::uint32_t> id) {
        return id ? std::optional(fmt::format("0x{:X}", *id)) : std::nullopt;
      };
      change.before.text = text(change.before.id);
      change.after.text = text(change.after.id);
    }
    sections_.CompareEntries(before, after);
    if (before.kind->source == language::SECTION_TABLE) CompareCells(before, after);
  }

  // IDs that sections of both machines have which are not the same.
  void CompareOwners(const language::SectionKind& kind, const KindMatch& match) {
    if (match.new_ids.empty()) return;
    std::map<std::uint32_t, std::uint32_t> owners;
    for (std::uint32_t i = 0; i < before_.model().sections(kind.compiled).size(); ++i) {
      const std::optional<std::uint32_t> id = before_.model().sections(kind.compiled)[i].id();
      if (id) owners.emplace(*id, i);
    }
    const ruxcomp::Sections sections = after_.model().sections(kind.compiled);
    std::vector<std::optional<std::uint32_t>> origin(sections.size());
    for (const Pair& pair : match.pairs) origin[pair.after] = pair.before;
    for (std::uint32_t i = 0; i < sections.size(); ++i) {
      const std::optional<std::uint32_t> id = sections[i].id();
      const auto owner = id ? owners.find(*id) : owners.end();
      if (owner == owners.end() || origin[i] == owner->second) continue;
      Change& change = Add(ClassId::kIdReused, At(before_, kind, owner->second),
                           At(after_, kind, i), language::KeywordOf(language::ENTRY_ID));
      change.before.text = change.before.name;
      change.after.text = change.after.name;
    }
  }

  void CompareOrder(const language::SectionKind& kind, const std::vector<Pair>& pairs) {
    const OrderChange order = OrderOf(pairs);
    if (order.order == Order::kSame) return;
    Change& change = Add(
        order.order == Order::kShifted ? ClassId::kSectionsShifted : ClassId::kSectionsReordered,
        At(before_, kind, order.before.before), At(after_, kind, order.after.after));
    change.before.text = OrdinalText(order.before.before);
    change.after.text = OrdinalText(order.after.after);
    if (order.order == Order::kShifted) return;
    // The ordinal is the same: which section has it is what differs.
    *change.before.text += ' ' + change.before.name.value_or("");
    *change.after.text += ' ' + change.after.name.value_or("");
  }

  void CompareCells(const PlacedSection& before, const PlacedSection& after) {
    const ruxcomp::TableCells* old_cells = before_.model().table(before.ordinal);
    const ruxcomp::TableCells* new_cells = after_.model().table(after.ordinal);
    if (old_cells == nullptr || new_cells == nullptr) return;
    for (std::size_t i = 0; i < old_cells->size(); ++i) {
      const std::size_t first = i;
      while (i < old_cells->size() && (*old_cells)[i] != (*new_cells)[i]) ++i;
      if (i > first) AddCells(before, after, first, i);
    }
  }

  void AddCells(const PlacedSection& before, const PlacedSection& after, std::size_t first,
                std::size_t end) {
    const std::string cells =
        end == first + 1 ? std::to_string(first) : fmt::format("{}..{}", first, end - 1);
    const auto text = [&](const ruxcomp::TableCells& all) {
      const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
      const auto last = all.begin() + static_cast<std::ptrdiff_t>(end);
      const bool is_even =
          std::all_of(begin, last, [&](std::uint8_t cell) { return cell == *begin; });
      return is_even ? std::to_string(*begin) : fmt::format("{}", fmt::join(begin, last, " "));
    };
    Change& change = Add(ClassId::kCellsChanged, before, after);
    change.entry = cells;
    change.before.text = text(*before_.model().table(before.ordinal));
    change.after.text = text(*after_.model().table(after.ordinal));
  }

  // Both lists are in the order of the words.
  void CompareWords() {
    const std::vector<machine::Origins::Word>& words = before_.origins()->words();
    const std::vector<machine::Origins::Word>& others = after_.origins()->words();
    auto word = words.begin();
    auto other = others.begin();
    while (word != words.end() || other != others.end()) {
      const bool is_old =
          other == others.end() || (word != words.end() && word->first < other->first);
      const bool is_new = !is_old && (word == words.end() || other->first < word->first);
      if (is_old) {
        AddWord(ClassId::kWordRemoved, &*word++, nullptr);
      } else if (is_new) {
        AddWord(ClassId::kWordAdded, nullptr, &*other++);
      } else {
        if (word->second != other->second) AddWord(ClassId::kWordChanged, &*word, &*other);
        ++word;
        ++other;
      }
    }
  }

  void AddWord(ClassId id, const machine::Origins::Word* before,
               const machine::Origins::Word* after) {
    Change change{&RowOf(id), &language::KindOf(language::SECTION_DEFINE)};
    if (before != nullptr) {
      change.entry = before->first;
      change.before.text = support::NumberText(before->second);
    }
    if (after != nullptr) {
      change.entry = after->first;
      change.after.text = support::NumberText(after->second);
    }
    changes_.push_back(std::move(change));
  }

  const machine::Machine& before_;
  const machine::Machine& after_;
  const Matching matching_;
  std::vector<Change> changes_;
  SectionComparer sections_;
};

}  // namespace

std::vector<Change> Compare(const machine::Machine& before, const machine::Machine& after) {
  return Comparison(before, after).Run();
}

}  // namespace rux::diff
