#include "reconcile/adopt.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "decompile/decompile.h"
#include "lists/list.h"
#include "machine/machine.h"
#include "machine/source.h"
#include "reader/script.h"
#include "reader/texts.h"
#include "reconcile/amount.h"
#include "reconcile/compare.h"
#include "reconcile/listing.h"
#include "reconcile/script_edits.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "settings/json_file.h"
#include "support/failure.h"
#include "support/placement.h"
#include "table/columns.h"

namespace rux::reconcile {
namespace {

namespace language = ruxcomp::language;
using support::ExitStatus;
using support::Failure;

// The number as a script writes it: as it is there now, in hexadecimal or with a sign.
std::string NumberValue(std::uint32_t number, double wanted, std::string_view now) {
  if (language::IsHexadecimal(now)) return fmt::format("0x{:X}", number);
  std::string text =
      wanted < 0 ? std::to_string(static_cast<std::int32_t>(number)) : std::to_string(number);
  return text.size() > language::kLongestNumber ? std::to_string(number) : text;
}

bool IsOfLimit(const Difference& difference) {
  return difference.column != nullptr && difference.column->column.is_limit();
}

// Whether the entry can decide what the limits of its section are numbers of.
bool IsMeasure(const Difference& difference) {
  const table::Column& column = difference.column->column;
  if (column.entry->source == language::ENTRY_TYPE) return true;
  const bool is_property = column.entry_class == language::CLASS_Property;
  return is_property && difference.row->subject.machine.DependsOn(column.entry_name);
}

bool IsRequired(const Difference& difference) {
  const language::SectionKind& kind = difference.row->subject.kind;
  for (const language::CompiledEntry& entry : language::CompiledEntriesOf(kind)) {
    if (entry.keyword == difference.column->column.name) return entry.is_required;
  }
  return false;
}

class Planner {
 public:
  explicit Planner(const Comparison& comparison) : comparison_(comparison) {}

  // Of the differences before that one.
  Adoption Plan(bool has_limits, std::size_t end) {
    for (std::size_t i = 0; i < end; ++i) {
      const Difference& difference = comparison_.differences[i];
      if (!has_limits && IsOfLimit(difference)) continue;
      Edit edit{&difference, ReasonToLeave(difference), ""};
      if (edit.reason.empty()) edit.reason = Make(difference, edit.value);
      adoption_.edits.push_back(std::move(edit));
    }
    for (const auto& [path, edits] : scripts_) {
      if (edits.has_edits()) adoption_.texts.emplace(path, edits.Text());
    }
    return std::move(adoption_);
  }

 private:
  // What a list cannot say, or is not to decide. Empty: it can.
  std::string ReasonToLeave(const Difference& difference) const {
    switch (difference.kind) {
      case DifferenceKind::kMissing:
        return "a list does not say how it is read";
      case DifferenceKind::kExtra:
        return "sections are not removed";
      case DifferenceKind::kDuplicate:
        return "the list has it twice";
      case DifferenceKind::kIncomparable:
        return "it is not a number, or has another unit";
      case DifferenceKind::kDiffers:
        break;
    }
    const table::Column& column = difference.column->column;
    if (column.derived != nullptr) return "it is worked out";
    if (column.entry->source == language::ENTRY_ID) return "other sections refer to it";
    if (!column.is_number() && !column.is_text()) return "only numbers and texts are edited";
    if (comparison_.held.count(difference.row->subject.ordinal) > 0 && IsMeasure(difference))
      return "limits that stay are measured by it";
    return "";
  }

  // Returns why that is not possible.
  std::string Make(const Difference& difference, std::string& value) {
    const std::string& key = difference.column->column.name;
    if (!difference.place) return "its place is not known";
    ScriptEdits& script = ScriptAt(difference.place->File());
    const std::uint32_t line = difference.place->line;
    const std::optional<std::string_view> now = script.ValueAt(line, key);
    const bool is_there = difference.ours.empty() ? script.HasSectionAt(line) : now.has_value();
    if (!is_there) return "the script does not have it at that place";
    const bool is_number = difference.column->column.is_number();
    const bool is_gone =
        is_number ? lists::IsNothing(difference.theirs) : difference.theirs.empty();
    if (is_gone && IsRequired(difference)) return "it is required";
    if (is_gone) {
      script.Remove(line);
      return "";
    }
    std::string reason = is_number ? SetNumber(difference, now.value_or(""), value)
                                   : SetText(difference.theirs, value);
    if (!reason.empty()) return reason;
    if (difference.ours.empty()) {
      script.Add(difference.row->subject.kind, line, key, value);
    } else {
      script.Replace(line, value);
    }
    return "";
  }

  std::string SetNumber(const Difference& difference, std::string_view now,
                        std::string& value) const {
    const ColumnPair& pair = *difference.column;
    const machine::Quantity quantity = QuantityFor(pair, *difference.row);
    const std::optional<double> wanted = StoredAmount(
        *AmountIn(difference.theirs), UnitOf(comparison_, pair, *difference.listed), quantity);
    const std::optional<std::uint32_t> number = NumberToStore(*wanted, difference.theirs, quantity);
    if (!number) return "no stored number is that amount";
    if (*number == language::kNoNumber) return "a script cannot have that number";
    value = NumberValue(*number, *wanted, now);
    return "";
  }

  static std::string SetText(const std::string& theirs, std::string& value) {
    if (theirs.find_first_of(std::string_view("\"\n\r\0", 4)) != std::string::npos)
      return "a script cannot have that text";
    value = decompile::PartText(theirs);
    return "";
  }

  ScriptEdits& ScriptAt(const std::string& path) {
    const auto known = scripts_.find(path);
    if (known != scripts_.end()) return known->second;
    std::string text = settings::ReadTextFile(path, ruxcomp::reader::kLargestScript);
    return scripts_.emplace(path, ScriptEdits(std::move(text))).first->second;
  }

  const Comparison& comparison_;
  std::map<std::string, ScriptEdits> scripts_;
  Adoption adoption_{&comparison_, {}, {}};
};

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
  for (const Edit& edit : Planner(comparison).Plan(true, comparison.differences.size()).edits) {
    if (!edit.reason.empty() && IsOfLimit(*edit.difference))
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
    UseTexts(Planner(attempt.comparison).Plan(attempt.has_limits, end));
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
    const Adoption adoption = Planner(comparison).Plan(false, comparison.differences.size());
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
  return Planner(comparison).Plan(true, comparison.differences.size());
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
