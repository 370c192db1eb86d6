#include "page/place_term.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/datum.h"
#include "evaluation/arithmetic.h"
#include "evaluation/result.h"
#include "inspect/entry_value.h"
#include "machine/value.h"
#include "page/contents.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {
namespace {

// The two numbers that a calculation takes; empty for what is not one, or has results of its own.
std::vector<compiled::Datum> OperandsOf(const machine::EntryValue& value) {
  if (!value.type || language::FindValueType(*value.type).shape != language::Shape::kCalculation)
    return {};
  for (const machine::EntryPart& part : value.parts) {
    if (part.name == "Operand" && part.items.size() == 2) return part.items;
  }
  return {};
}

std::string SignOf(const machine::EntryValue& value) {
  for (const machine::EntryPart& part : value.parts) {
    if (part.name == "Operator" && part.items.size() == 1) return part.items.front().text;
  }
  return "";
}

// Numbers have 32 bits, as in the file. Of a firmware nothing else is assumed: what depends on its
// choices is not calculated.
const profile::Profile& PlainNumbers() {
  static const profile::Profile plain = [] {
    profile::Profile profile;
    profile.width.stated = 32;
    profile.sign.stated = profile::Sign::kUnsigned;
    return profile;
  }();
  return plain;
}

std::optional<evaluation::Number> NumberOf(const PlaceTerm& term) {
  const evaluation::Arithmetic arithmetic(PlainNumbers());
  if (term.operands.empty()) {
    if (!term.item || !term.item->IsNumber()) return std::nullopt;
    const evaluation::Result stored = arithmetic.Stored(term.item->number);
    return stored.IsNumber() ? std::optional(stored.number()) : std::nullopt;
  }
  const language::Operator* const sign = language::FindOperator(std::string_view(term.sign));
  if (sign == nullptr || language::IsComparison(sign->code)) return std::nullopt;
  const std::optional<evaluation::Number> x = NumberOf(term.operands[0]);
  const std::optional<evaluation::Number> y = NumberOf(term.operands[1]);
  if (!x || !y) return std::nullopt;
  const evaluation::Result result = arithmetic.Calculate(sign->code, *x, *y);
  return result.IsNumber() ? std::optional(result.number()) : std::nullopt;
}

}  // namespace

std::optional<std::uint32_t> ArgumentIn(const compiled::Datum& item) {
  if (!item.Is(language::CLASS_Small)) return std::nullopt;
  const std::string_view text = item.text;
  if (text.compare(0, language::kArgumentPrefix.size(), language::kArgumentPrefix) != 0)
    return std::nullopt;
  const language::Number number =
      language::ReadNumber(text.substr(language::kArgumentPrefix.size()));
  return number.is_number ? std::optional<std::uint32_t>(number.value) : std::nullopt;
}

std::optional<std::uint32_t> ArgumentIn(const PlaceTerm& term) {
  for (const PlaceTerm& operand : term.operands) {
    if (const std::optional<std::uint32_t> argument = ArgumentIn(operand)) return argument;
  }
  return term.operands.empty() && term.item ? ArgumentIn(*term.item) : std::nullopt;
}

bool Pass(const std::vector<compiled::Datum>& arguments, std::uint32_t first, PlaceTerm& term) {
  for (PlaceTerm& operand : term.operands) {
    if (!Pass(arguments, first, operand)) return false;
  }
  const std::optional<std::uint32_t> argument =
      term.operands.empty() ? ArgumentIn(term) : std::nullopt;
  if (!argument) return true;
  if (*argument < first || *argument - first >= arguments.size()) return false;
  term.item = arguments[*argument - first];
  return true;
}

std::string TextOf(const PlaceTerm& term) {
  if (!term.item) return "";
  const std::optional<evaluation::Number> number =
      term.operands.empty() ? std::nullopt : NumberOf(term);
  if (!number || *number < 0 || *number > std::numeric_limits<std::uint32_t>::max())
    return inspect::ItemText(*term.item, term.is_address);
  return inspect::ItemText(compiled::NumberDatum(static_cast<std::uint32_t>(*number)),
                           term.is_address);
}

Steps::Steps(const std::vector<ruxcomp::Entry>& entries, const ruxcomp::Section& section) {
  for (const ruxcomp::Entry& entry : entries) {
    if (!IsValue(entry)) continue;
    machine::EntryValue value = machine::ValueOf(entry);
    if (OperandsOf(value).empty()) continue;
    calculations_.emplace(machine::KeyOf(section, entry), std::move(value));
  }
}

PlaceTerm Steps::TermOf(const compiled::Datum& item, bool is_address, int depth) const {
  PlaceTerm term{item, is_address};
  const auto step = depth < kMostDepth ? calculations_.find(item.text) : calculations_.end();
  if (step == calculations_.end()) return term;
  term.sign = SignOf(step->second);
  for (const compiled::Datum& operand : OperandsOf(step->second))
    term.operands.push_back(TermOf(operand, is_address, depth + 1));
  return term;
}

}  // namespace rux::page
