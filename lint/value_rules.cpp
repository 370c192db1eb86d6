// Values of sensors, calculations and tables.
#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "lint/lint_list.h"
#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"
#include "rules/script_item.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::lint {
namespace {

using language::Shape;
using rules::ItemRef;
using rules::RuleContext;
using rules::ScriptItem;

// What an operand is: a number, or else a name. Names that are also words count as the words.
struct Operand {
  std::optional<std::uint32_t> number;
  std::string_view name;

  bool operator==(const Operand& other) const {
    return number == other.number && name == other.name;
  }
  bool operator<(const Operand& other) const {
    return std::pair(number, name) < std::pair(other.number, other.name);
  }
};

Operand OperandOf(std::string_view part, const RuleContext& context) {
  const auto number = context.words.WordOrNumber(part);
  return number ? Operand{number, {}} : Operand{{}, part};
}

// A calculation with all its operands.
struct Calculation {
  std::string_view operator_text;
  std::uint32_t code;
  std::vector<Operand> operands;
};

std::optional<Calculation> CalculationIn(const ScriptItem& item, const RuleContext& context) {
  if (item.record == nullptr || item.record->shape != Shape::kCalculation) return std::nullopt;
  const std::size_t first = item.first_field;
  if (item.parts.size() < first + 3) return std::nullopt;
  Calculation found{item.parts[first], language::OperatorCode(item.parts[first]), {}};
  for (std::size_t i = first + 1; i < item.parts.size(); ++i) {
    found.operands.push_back(OperandOf(item.parts[i], context));
  }
  const bool is_whole = !language::IsComparison(found.code) || found.operands.size() >= 4;
  return found.code != 0 && is_whole ? std::optional(found) : std::nullopt;
}

void CheckComparison(const ScriptItem& item, const RuleContext& context) {
  const auto found = CalculationIn(item, context);
  if (!found || !language::IsComparison(found->code)) return;
  const std::vector<Operand>& operands = found->operands;
  const bool are_numbers = operands[0].number && operands[1].number;
  if (are_numbers || operands[0] == operands[1]) {
    context.report.Add(RowOf(RuleId::kConstantCondition), item,
                       are_numbers ? "both sides are numbers: the result never changes"
                                   : "both sides are the same: the result never changes",
                       found->operator_text);
  }
  if (operands[2] == operands[3]) {
    context.report.Add(RowOf(RuleId::kEqualResults), item,
                       "the results for true and false are the same", item.parts.back());
  }
}

// Operators that leave an operand as it is when the other one is that number.
struct Neutral {
  std::string_view operator_text;
  std::uint32_t number;
  bool also_first;
};
constexpr Neutral kNeutral[] = {
    {"+", 0, true}, {"-", 0, false},  {"*", 1, true},   {"/", 1, false},   {"|", 0, true},
    {"^", 0, true}, {">>", 0, false}, {"<<", 0, false}, {"pow", 1, false},
};

void CheckArithmetic(const ScriptItem& item, const RuleContext& context) {
  const auto found = CalculationIn(item, context);
  if (!found || language::IsComparison(found->code)) return;
  const auto& first = found->operands[0].number;
  const auto& second = found->operands[1].number;
  const std::string_view text = found->operator_text;
  const std::string_view meant = item.parts[item.first_field + 2];
  if (second == 0U && (text == "/" || text == "%")) {
    context.report.Add(RowOf(RuleId::kDivisionByZero), item, "the divisor is 0", meant);
  }
  if (second && *second >= 32 && (text == ">>" || text == "<<")) {
    context.report.Add(RowOf(RuleId::kWideShift), item, "a number has only 32 bits to shift",
                       meant);
  }
  if (first && second) return;
  for (const Neutral& neutral : kNeutral) {
    if (text != neutral.operator_text) continue;
    const bool is_second = second == neutral.number;
    if (!is_second && !(neutral.also_first && first == neutral.number)) continue;
    const std::size_t other = is_second ? 1 : 2;
    context.report.Add(
        RowOf(RuleId::kNeutralOperand), item,
        [&] {
          return fmt::format("the result is always {}", item.parts[item.first_field + other]);
        },
        item.parts[item.first_field + 3 - other]);
  }
}

class SameReadingRule : public rules::Rule {
 public:
  explicit SameReadingRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return kind == language::SECTION_SENSOR && entry == language::ENTRY_VALUE;
  }
  void Check(const ScriptItem& item) override {
    if (item.record == nullptr || !Reads(item.record->shape) || item.parts.size() < 2) return;
    std::vector<Operand> parts;
    parts.reserve(item.parts.size());
    for (const std::string_view part : item.parts) parts.push_back(OperandOf(part, context_));
    const auto [known, is_new] = readings_.try_emplace(std::move(parts), item, item.first());
    if (is_new) return;
    context_.report
        .Add(RowOf(RuleId::kSameReading), item, "another sensor reads the same", item.first())
        .Note("the other one is here", known->second.first, known->second.second);
  }

 private:
  static bool Reads(Shape shape) {
    return shape == Shape::kBus || shape == Shape::kBusArgs || shape == Shape::kCall ||
           shape == Shape::kCell;
  }

  const RuleContext context_;
  std::map<std::vector<Operand>, std::pair<ItemRef, std::string_view>> readings_;
};

class FlatTableRule : public rules::Rule {
 public:
  explicit FlatTableRule(const RuleContext& context) : context_(context) {}

  bool WantsSections(language::SectionId kind) const override {
    return kind == language::SECTION_TABLE;
  }
  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry == language::ENTRY_TABLE_ROW;
  }
  void BeginSection(const rules::ScriptSection& section, language::SectionId) override {
    section_ = &section;
    rows_ = 0;
    is_flat_ = true;
  }
  void Check(const ScriptItem& item) override {
    const std::uint32_t number =
        item.first().empty() ? 0 : language::ReadNumber(item.first()).value;
    if (rows_++ == 0) first_ = number;
    is_flat_ = is_flat_ && number == first_;
  }
  // One row, such as 0.255 = 0, is a table that is to be filled in.
  void EndSection() override {
    if (rows_ < 2 || !is_flat_) return;
    context_.report.Add(RowOf(RuleId::kFlatTable), *section_,
                        [&] { return fmt::format("all rows set {}", first_); });
  }

 private:
  const RuleContext context_;
  const rules::ScriptSection* section_ = nullptr;
  std::size_t rows_ = 0;
  std::uint32_t first_ = 0;
  bool is_flat_ = true;
};

}  // namespace

std::unique_ptr<rules::Rule> MakeComparisonRule(const LintContext& context) {
  return rules::Each<rules::With<language::PAYLOAD_VALUE>, CheckComparison>(context);
}
std::unique_ptr<rules::Rule> MakeArithmeticRule(const LintContext& context) {
  return rules::Each<rules::With<language::PAYLOAD_VALUE>, CheckArithmetic>(context);
}
std::unique_ptr<rules::Rule> MakeSameReadingRule(const LintContext& context) {
  return std::make_unique<SameReadingRule>(context);
}
std::unique_ptr<rules::Rule> MakeFlatTableRule(const LintContext& context) {
  return std::make_unique<FlatTableRule>(context);
}

}  // namespace rux::lint
