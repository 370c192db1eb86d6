#include "evaluation/evaluator.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
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
#include "ruxcomp/records.h"

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

Result Evaluator::ValueOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  Frame frame;
  frame.is_ipmi = entry.name() == language::FixedKeysOf(language::CLASS_Value)[0].text;
  return Evaluate(section, entry, frame).result;
}

Evaluator::Step Evaluator::Evaluate(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                                    Frame& frame) {
  if (const Sequence* given = readings_.OfValue(KeyOf(section, entry))) {
    const Result result = Next(*given);
    Observe([&](Observer& each) { each.Given(section, entry, result); });
    return {result};
  }
  Observe([&](Observer& each) { each.Begin(section, entry); });
  steps_ += std::max<std::size_t>(entry.values().size(), 1);
  ++depth_;
  const Step step = [&]() -> Step {
    if (steps_ > kMostSteps) return {Result::Error(fmt::format("more than {} steps", kMostSteps))};
    if (depth_ <= kDeepestValue) return StepOf(section, entry, frame);
    return {Result::Error(fmt::format("values are nested more than {} deep", kDeepestValue))};
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
  if (!meaning) return {Result::Unknown(fmt::format("no profile states what type {} does", type))};
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
  if (!condition.IsNumber()) return {condition, false, std::nullopt, true};
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
      if (!condition.IsNumber()) return condition;
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
  if (!x.IsNumber() || !y.IsNumber()) return ObstacleOf(x, y);
  if (!language::IsComparison(code)) return arithmetic_.Calculate(code, x.number(), y.number());
  Result holds = arithmetic_.Compare(code, x.number(), y.number());
  if (!holds.IsNumber()) return holds;
  const bool is_true = holds.number() != 0;
  Observe([&](Observer& each) { each.Branch(section, entry, is_true); });
  if (!profile_.comparison.stated) return Unstated(profile_.comparison);
  if (profile_.comparison.Is(profile::Comparison::kOneIfTrue)) return holds;
  const bool is_third = is_true == profile_.comparison.Is(profile::Comparison::kThirdIfTrue);
  return Operand(entry.value(is_third ? 4 : 5), frame);
}

Result Evaluator::Access(bool is_write, const ruxcomp::Entry& entry, Frame& frame) {
  AccessKey key = {TypeOf(entry)};
  for (const Result& part : Operands(entry, 1, frame)) {
    if (!part.IsNumber()) return part;
    key.push_back(part.number());
  }
  const auto result = [&]() -> Result {
    if (!is_write) {
      const Sequence* given = readings_.OfAccess(key);
      return given != nullptr ? Next(*given) : Result::Unknown("no reading of " + TextOf(key));
    }
    if (!profile_.write_result.stated) return Unstated(profile_.write_result);
    constexpr std::size_t kFirstData = 5;
    if (profile_.write_result.Is(profile::WriteResult::kZero)) return Result::Of(0);
    const bool has_data = key.size() > kFirstData;
    return has_data && profile_.write_result.Is(profile::WriteResult::kData)
               ? Result::Of(key[kFirstData])
               : NoNumber("a write");
  }();
  Observe([&](Observer& each) { each.Access(key, is_write, result); });
  return result;
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

Result Evaluator::Operand(const ruxcomp::Value& value, Frame& frame) {
  switch (language::ClassOf(value.index())) {
    case language::CLASS_Small:
      return Argument(Immediate(value), frame);
    case language::CLASS_Value:
      return LocalValue(value, frame);
    case language::CLASS_Global:
      return Global(value);
    default:
      // Some numbers cannot be found in a meta file.
      return value.kind() == RUX_DATA_NUMBER ? arithmetic_.Stored(value.number())
                                             : Result::Unknown("the file has no such number");
  }
}

std::vector<Result> Evaluator::Operands(const ruxcomp::Entry& entry, std::size_t first,
                                        Frame& frame) {
  std::vector<Result> results;
  const ruxcomp::Values values = entry.values();
  for (std::size_t i = first; i < values.size(); ++i) results.push_back(Operand(values[i], frame));
  return results;
}

Result Evaluator::Argument(std::uint32_t number, const Frame& frame) const {
  if (frame.round && number == 0) return Result::Of(*frame.round);
  if (frame.action == nullptr) return Result::Unknown(fmt::format("ARG{} is of no call", number));
  if (!profile_.first_argument.stated) return Unstated(profile_.first_argument);
  const std::uint32_t first = profile_.first_argument.Is(profile::FirstArgument::kArg1) ? 1 : 0;
  if (number >= first && number - first < frame.arguments.size())
    return frame.arguments[number - first];
  return Result::Unknown(fmt::format("ARG{} is not given", number));
}

Result Evaluator::Global(const ruxcomp::Value& value) {
  const GlobalEntry* global = plan_.Global(value.index());
  if (global == nullptr) return Result::Unknown("the global is not in the file");
  const std::uint32_t identifier = value.index();
  const auto known = globals_.find(identifier);
  if (known != globals_.end()) return known->second;
  if (std::find(begun_globals_.begin(), begun_globals_.end(), identifier) != begun_globals_.end())
    return Result::Error(fmt::format("G_{} uses itself", global->entry.name()));
  begun_globals_.push_back(identifier);
  const Result result = ValueOf(global->section, global->entry);
  begun_globals_.pop_back();
  if (!profile_.globals.Is(profile::Globals::kEachUse)) globals_.emplace(identifier, result);
  return result;
}

Result Evaluator::Next(const Sequence& sequence) {
  std::size_t& taken = taken_[&sequence];
  const Number number = sequence[std::min(taken, sequence.size() - 1)];
  ++taken;
  return arithmetic_.Given(number);
}

}  // namespace rux::evaluation
