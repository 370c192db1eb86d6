#include "reconcile/adopt.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "lists/list.h"
#include "machine/machine.h"
#include "machine/source.h"
#include "reader/texts.h"
#include "reconcile/compare.h"
#include "reconcile/edit_plan.h"
#include "reconcile/listing.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/paths.h"
#include "support/failure.h"
#include "support/placement.h"
#include "table/columns.h"

namespace rux::reconcile {
namespace {

namespace language = ruxcomp::language;
using support::ExitStatus;
using support::Failure;

// What a difference is known by in another machine: the row of the list, or the NAME of a section
// that the list does not have; the column. A section with a row may have another NAME there.
using DifferenceKey = std::tuple<const lists::ListRow*, std::string, std::string>;

DifferenceKey KeyOf(const Difference& difference) {
  return {difference.listed, difference.listed == nullptr ? difference.name : "",
          difference.column == nullptr ? "" : difference.column->column.name};
}

// Whether numbers of the one quantity are other amounts of the other one.
bool AreMeasuredAnew(const machine::Quantity& now, const machine::Quantity& then) {
  const auto is_other = [](const auto& a, const auto& b) { return a && a != b; };
  return is_other(now.unit, then.unit) || is_other(now.divisor, then.divisor) ||
         is_other(now.is_signed, then.is_signed);
}

// Adds the rows of a comparison with new measures of which some limits would stay as numbers.
void HoldRows(const Comparison& comparison, std::set<std::size_t>& held) {
  std::set<std::size_t> staying;
  for (const Edit& edit : PlanAdoption(comparison).edits) {
    if (!edit.reason.empty() && edit.difference->is_of_limit())
      staying.insert(edit.difference->row->subject.ordinal);
  }
  for (const table::Row& row : comparison.table.rows) {
    const table::Subject& subject = row.subject;
    if (!comparison.are_chosen[subject.ordinal]) continue;
    if (!AreMeasuredAnew(subject.machine.QuantityOf(subject.section), subject.quantity)) continue;
    const bool has_unlisted = std::any_of(
        comparison.unlisted.begin(), comparison.unlisted.end(), [&](const std::string& name) {
          return table::EntryOf(subject, table::ColumnFor(subject.kind, name));
        });
    if (has_unlisted || staying.count(subject.ordinal) > 0) held.insert(subject.ordinal);
  }
}

// Why the script does not compile; empty: it does.
std::string ErrorIn(const std::string& script, const LoadMachine& load) {
  try {
    load(script);
    return "";
  } catch (const Failure& failure) {
    return failure.what();
  }
}

// Machines are read with these texts from now on.
void UseTexts(const Adoption& adoption) {
  ruxcomp::reader::Texts::Clear();
  for (const auto& [path, text] : adoption.texts)
    ruxcomp::reader::Texts::Put(language::WithSlashes(path), text);
}

// Edits of a machine, for scripts that must compile with them.
struct Attempt {
  const Comparison& comparison;
  const Listing& listing;
  bool has_limits;
};

// Names the first edit with which, after those before it, the script does not compile. Compiles it
// as often as the number of edits can be halved. `error`: with all of them.
Failure RefusedEdit(const Attempt& attempt, std::string error, const std::string& script,
                    const LoadMachine& load) {
  const std::vector<Difference>& differences = attempt.comparison.differences;
  std::size_t sound = 0;
  std::size_t unsound = differences.size();
  while (unsound - sound > 1) {
    const std::size_t end = sound + (unsound - sound) / 2;
    UseTexts(PlanEdits(attempt.comparison, attempt.has_limits, end));
    std::string other = ErrorIn(script, load);
    (other.empty() ? sound : unsound) = end;
    if (!other.empty()) error = std::move(other);
  }
  const Difference& refused = differences[unsound - 1];
  if (refused.column == nullptr) return Failure(ExitStatus::kTrouble, "{}", error);
  return Failure(
      ExitStatus::kFindings,
      "the scripts stay as they are: {} of {} as the list has it ({}:{}) is an error: {}",
      refused.column->column.name, refused.name, attempt.listing.path, refused.listed->line, error);
}

// The machine of an edited script.
machine::Machine LoadEdited(const Attempt& attempt, const std::string& script,
                            const LoadMachine& load) {
  try {
    return load(script);
  } catch (const Failure& failure) {
    throw RefusedEdit(attempt, failure.what(), script, load);
  }
}

void ExpectScript(const std::string& name) {
  const machine::Source source = machine::ReadSource(name);
  if (source.form != ruxcomp::file::Form::kNone || !source.revision.empty())
    throw Failure(ExitStatus::kWrongUsage, "cannot edit {}: it is not a script in a file", name);
}

}  // namespace

std::size_t Adoption::CountOfMade() const {
  return static_cast<std::size_t>(std::count_if(
      edits.begin(), edits.end(), [](const Edit& edit) { return edit.reason.empty(); }));
}

Comparison CompareToAdopt(const machine::Machine& machine, const Listing& listing,
                          const LoadMachine& load) {
  ExpectScript(machine.name());
  Comparison comparison = CompareWith(machine, listing);
  for (;;) {
    const Adoption adoption = PlanEdits(comparison, false, comparison.differences.size());
    if (adoption.texts.empty()) return comparison;
    UseTexts(adoption);
    const machine::Machine measured =
        LoadEdited({comparison, listing, false}, machine.name(), load);
    ruxcomp::reader::Texts::Clear();
    Comparison result = CompareChosen(machine, listing, measured, comparison.are_chosen);
    result.held = comparison.held;
    const std::size_t held = comparison.held.size();
    HoldRows(result, comparison.held);
    if (comparison.held.size() == held) return result;
  }
}

Adoption PlanAdoption(const Comparison& comparison) {
  return PlanEdits(comparison, true, comparison.differences.size());
}

void VerifyAdoption(const Adoption& adoption, const Listing& listing, const std::string& name,
                    const std::vector<std::string>& others, const LoadMachine& load) {
  if (adoption.texts.empty()) return;
  std::vector<std::string> sound;
  std::copy_if(others.begin(), others.end(), std::back_inserter(sound),
               [&](const std::string& other) { return ErrorIn(other, load).empty(); });
  UseTexts(adoption);
  const Attempt attempt{*adoption.comparison, listing, true};
  const machine::Machine machine = LoadEdited(attempt, name, load);
  for (const std::string& other : sound) LoadEdited(attempt, other, load);
  std::set<DifferenceKey> left;
  for (const Edit& edit : adoption.edits) {
    if (!edit.reason.empty()) left.insert(KeyOf(*edit.difference));
  }
  const Comparison result =
      CompareChosen(machine, listing, machine, adoption.comparison->are_chosen);
  for (const Difference& difference : result.differences) {
    if (left.count(KeyOf(difference)) > 0) continue;
    throw Failure(
        ExitStatus::kFindings,
        "the scripts stay as they are: after the edits, {} of {} would not be what the "
        "list says",
        difference.column == nullptr ? table::kNameColumn : difference.column->column.name,
        difference.name);
  }
}

void WriteScripts(const Adoption& adoption) {
  std::vector<support::NewFile> files;
  files.reserve(adoption.texts.size());
  for (const auto& [path, text] : adoption.texts) files.push_back({path, text});
  support::PutInPlace(files);
}

}  // namespace rux::reconcile
