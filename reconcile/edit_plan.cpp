#include "reconcile/edit_plan.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "decompile/decompile.h"
#include "lists/list.h"
#include "machine/machine.h"
#include "reader/script.h"
#include "reconcile/adopt.h"
#include "reconcile/amount.h"
#include "reconcile/compare.h"
#include "reconcile/pairing.h"
#include "reconcile/script_edits.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "settings/json_file.h"
#include "table/columns.h"

namespace rux::reconcile {
namespace {

namespace language = ruxcomp::language;

// The number as a script writes it: as it is there now, in hexadecimal or with a sign.
std::string NumberValue(std::uint32_t number, double wanted, std::string_view now) {
  if (language::IsHexadecimal(now)) return fmt::format("0x{:X}", number);
  std::string text =
      wanted < 0 ? std::to_string(static_cast<std::int32_t>(number)) : std::to_string(number);
  return text.size() > language::kLongestNumber ? std::to_string(number) : text;
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
      if (!has_limits && difference.is_of_limit()) continue;
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

}  // namespace

Adoption PlanEdits(const Comparison& comparison, bool has_limits, std::size_t end) {
  return Planner(comparison).Plan(has_limits, end);
}

}  // namespace rux::reconcile
