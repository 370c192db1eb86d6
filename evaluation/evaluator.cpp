#include "evaluation/evaluator.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "evaluation/arithmetic.h"
#include "evaluation/change.h"
#include "evaluation/observer.h"
#include "evaluation/plan.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"

namespace rux::evaluation {

using profile::Meaning;

namespace {

Result NoNumber(const std::string& what) { return Result::Nothing(what + " yields no number"); }

// The number that an index carries in itself.
std::uint32_t Immediate(const ruxcomp::Value& value) { return language::OrdinalOf(value.index()); }

std::uint32_t TypeOf(const ruxcomp::Entry& entry) { return Immediate(entry.value()); }

bool HasType(const ruxcomp::Entry& entry) {
  const ruxcomp::Value type = entry.value();
  return type && language::ClassOf(type.index()) == language::CLASS_ValueType;
}

// Whether values of the type, whose meaning no profile states, may call, write, or decide what
// does.
bool MayActAs(std::uint32_t type) {
  const language::ValueType& row = language::FindValueType(type);
  const auto acts = [&](const profile::MeaningRow& each) {
    switch (each.meaning) {
      case Meaning::kNothing:
      case Meaning::kZero:
      case Meaning::kOperand:
      case Meaning::kWait:
      case Meaning::kRead:
      case Meaning::kField:
        return false;
      default:
        return each.Fits(row);
    }
  };
  return std::any_of(std::begin(profile::kMeanings), std::end(profile::kMeanings), acts);
}

// How many values an entry of the type has at least, the type among them.
std::size_t LeastOf(const ruxcomp::Entry& entry) {
  const std::uint32_t type = TypeOf(entry);
  const std::uint32_t operator_code =
      entry.values().size() > 1 ? Immediate(entry.value(1)) : std::uint32_t{0};
  return language::TypeFor(type, operator_code).least;
}

}  // namespace

void Evaluator::BeginRound() {
  globals_.clear();
  taken_.clear();
  steps_ = 0;
}

void Evaluator::Give(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                     const Result& number) {
  Observe([&](Observer& each) { each.Given(section, entry, number); });
}

Result Evaluator::LeaveOpen(Result why) {
  Observe([&](Observer& each) { each.Open(why); });
  return why;
}

Result Evaluator::ValueOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  const GlobalEntry* global =
      section.kind() == RUX_SECT_GLOBAL ? plan_.Global(entry.identifier()) : nullptr;
  if (global != nullptr && KeyOf(global->section, global->entry) == KeyOf(section, entry))
    return Global(entry.identifier());
  Frame frame;
  frame.is_ipmi = entry.name() == language::FixedKeysOf(language::CLASS_Value)[0].text;
  return Evaluate(section, entry, frame).result;
}

Evaluator::Step Evaluator::Evaluate(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                                    Frame& frame) {
  if (const Sequence* given = readings_.OfValue(KeyOf(section, entry))) {
    const Result result = Next(*given);
    Give(section, entry, result);
    return {result};
  }
  Observe([&](Observer& each) { each.Begin(section, entry); });
  steps_ += std::max<std::size_t>(entry.values().size(), 1);
  ++depth_;
  const Step step = [&]() -> Step {
    if (steps_ > most_steps_) return {TooManySteps()};
    if (depth_ <= kDeepestValue) return StepOf(section, entry, frame);
    return {LeaveOpen(
        Result::Error(fmt::format("values are nested more than {} deep", kDeepestValue)))};
  }();
  --depth_;
  Observe([&](Observer& each) { each.End(section, entry, step.result); });
  return step;
}

Evaluator::Step Evaluator::StepOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                                  Frame& frame) {
  if (!HasType(entry)) return {Result::Unknown("the entry has no value")};
  const std::uint32_t type = TypeOf(entry);
  const std::optional<Meaning> meaning = profile_.MeaningOf(type);
  if (!meaning) {
    Result unknown = Result::Unknown(fmt::format("no profile states what type {} does", type));
    return {MayActAs(type) ? LeaveOpen(std::move(unknown)) : std::move(unknown)};
  }
  if (entry.values().size() < LeastOf(entry))
    return {Result::Error(fmt::format("a value of type {} lacks parts", type))};
  switch (*meaning) {
    case Meaning::kIf:
    case Meaning::kIfNot:
    case Meaning::kGoto:
      return Control(*meaning, section, entry, frame);
    default:
      return {Plain(*meaning, section, entry, frame)};
  }
}

Evaluator::Step Evaluator::Control(Meaning meaning, const ruxcomp::Section& section,
                                   const ruxcomp::Entry& entry, Frame& frame) {
  if (meaning == Meaning::kGoto) return {NoNumber("a goto"), false, entry.value(1).index()};
  Result condition = Operand(entry.value(1), frame);
  if (!condition.IsNumber()) return {LeaveOpen(condition), false, std::nullopt, true};
  const bool holds = condition.number() != 0;
  Observe([&](Observer& each) { each.Branch(section, entry, holds); });
  return {NoNumber("a condition"), holds == (meaning == Meaning::kIfNot)};
}

Result Evaluator::Plain(Meaning meaning, const ruxcomp::Section& section,
                        const ruxcomp::Entry& entry, Frame& frame) {
  switch (meaning) {
    case Meaning::kZero:
      return Result::Of(0);
    case Meaning::kOperand:
      return Operand(entry.value(1), frame);
    case Meaning::kCalculate:
      return Calculation(section, entry, frame);
    case Meaning::kCall:
      return CallAt(1, entry, frame);
    case Meaning::kCallIf:
    case Meaning::kCallIfNot: {
      Result condition = Operand(entry.value(1), frame);
      if (!condition.IsNumber()) return LeaveOpen(condition);
      const bool holds = condition.number() != 0;
      Observe([&](Observer& each) { each.Branch(section, entry, holds); });
      return holds == (meaning == Meaning::kCallIf) ? CallAt(2, entry, frame)
                                                    : NoNumber("a call that is left out");
    }
    case Meaning::kRead:
    case Meaning::kWrite:
      return Access(meaning == Meaning::kWrite, entry, frame);
    case Meaning::kField: {
      Result x = entry.values().size() > 3 ? Operand(entry.value(3), frame)
                                           : Result::Unknown("the field is of no operand");
      if (!x.IsNumber()) return x;
      return arithmetic_.Field(entry.value(1).number(), entry.value(2).number(), x.number());
    }
    case Meaning::kList:
    case Meaning::kFirst:
    case Meaning::kLast:
      return List(meaning, entry, frame);
    case Meaning::kCell:
      return Cell(entry, frame);
    case Meaning::kWait:
      return NoNumber("a wait");
    default:
      return NoNumber(fmt::format("type {}", TypeOf(entry)));
  }
}

Result Evaluator::Calculation(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                              Frame& frame) {
  const Change* changed = Change::At(change_, section, entry);
  const std::uint32_t code = changed != nullptr ? changed->number : Immediate(entry.value(1));
  const Result x = Operand(entry.value(2), frame);
  const Result y = Operand(entry.value(3), frame);
  const bool is_comparison = language::IsComparison(code);
  if (!x.IsNumber() || !y.IsNumber())
    return is_comparison ? Undecided(entry, ObstacleOf(x, y)) : ObstacleOf(x, y);
  if (!is_comparison) return arithmetic_.Calculate(code, x.number(), y.number());
  Result holds = arithmetic_.Compare(code, x.number(), y.number());
  if (!holds.IsNumber()) return Undecided(entry, holds);
  const bool is_true = holds.number() != 0;
  Observe([&](Observer& each) { each.Branch(section, entry, is_true); });
  if (!profile_.comparison.stated) return Undecided(entry, Unstated(profile_.comparison));
  if (profile_.comparison.Is(profile::Comparison::kOneIfTrue)) return holds;
  const bool is_third = is_true == profile_.comparison.Is(profile::Comparison::kThirdIfTrue);
  return Operand(entry.value(is_third ? 4 : 5), frame);
}

Result Evaluator::Undecided(const ruxcomp::Entry& entry, Result why) {
  const bool may_act = !profile_.comparison.Is(profile::Comparison::kOneIfTrue) &&
                       (MayAct(entry.value(4)) || MayAct(entry.value(5)));
  return may_act ? LeaveOpen(std::move(why)) : why;
}

Result Evaluator::List(Meaning meaning, const ruxcomp::Entry& entry, Frame& frame) {
  const std::vector<Result> items = Operands(entry, 1, frame);
  if (items.empty() || meaning == Meaning::kList) return NoNumber("a list");
  return meaning == Meaning::kFirst ? items.front() : items.back();
}

Result Evaluator::Cell(const ruxcomp::Entry& entry, Frame& frame) {
  Result index = Operand(entry.value(2), frame);
  if (!index.IsNumber()) return index;
  Number cell = index.number();
  constexpr Number kLastCell = language::kTableCells - 1;
  if (cell < 0 || cell > kLastCell) {
    if (!profile_.cell_beyond.stated) return Unstated(profile_.cell_beyond);
    if (profile_.cell_beyond.Is(profile::CellBeyond::kError))
      return Result::Error(fmt::format("the table has no cell {}", TextOf(cell)));
    const bool is_modulo = profile_.cell_beyond.Is(profile::CellBeyond::kModulo);
    cell = is_modulo ? cell & kLastCell : std::clamp<Number>(cell, 0, kLastCell);
  }
  const ruxcomp::Model& model = plan_.machine().model();
  const ruxcomp::Section table = model.section_named(RUX_SECT_TABLE, entry.value(1).text());
  const auto* cells = table ? model.table(table.ordinal()) : nullptr;
  if (cells == nullptr) return Result::Unknown("the table is not in the file");
  const auto at = static_cast<std::uint32_t>(cell);
  Observe([&](Observer& each) { each.Cell(table, at); });
  return arithmetic_.Stored(Change::CellAt(change_, table.ordinal(), at, (*cells)[at]));
}

}  // namespace rux::evaluation
