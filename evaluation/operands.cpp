// What values refer to, and accesses, which are known by that.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "evaluation/arithmetic.h"
#include "evaluation/evaluator.h"
#include "evaluation/observer.h"
#include "evaluation/plan.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::evaluation {
namespace {

// Where the numbers of an access begin that are not its address.
constexpr std::size_t kFirstData = 5;

// A number in the file, unlike one that an index has in itself or a name refers to.
bool IsStored(const ruxcomp::Value& value) {
  switch (language::ClassOf(value.index())) {
    case language::CLASS_Small:
    case language::CLASS_Value:
    case language::CLASS_Global:
      return false;
    default:
      return value.kind() == RUX_DATA_NUMBER;
  }
}

}  // namespace

Result Evaluator::Operand(const ruxcomp::Value& value, Frame& frame) {
  switch (language::ClassOf(value.index())) {
    case language::CLASS_Small:
      return Argument(language::OrdinalOf(value.index()), frame);
    case language::CLASS_Value:
      return LocalValue(value, frame);
    case language::CLASS_Global:
      return Global(value.index());
    default:
      // Some numbers cannot be found in a meta file.
      return IsStored(value) ? arithmetic_.Stored(value.number())
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

Result Evaluator::Global(std::uint32_t identifier) {
  const GlobalEntry* global = plan_.Global(identifier);
  if (global == nullptr) return Result::Unknown("the global is not in the file");
  const auto known = globals_.find(identifier);
  if (known != globals_.end()) {
    const bool is_same = profile_.globals.stated || known->second.is_fixed;
    return is_same ? known->second.result : LeaveOpen(Unstated(profile_.globals));
  }
  if (std::find(begun_globals_.begin(), begun_globals_.end(), identifier) != begun_globals_.end())
    return Result::Error(fmt::format("G_{} uses itself", global->entry.name()));
  begun_globals_.push_back(identifier);
  const std::size_t events = events_;
  Frame frame;
  const Result result = Evaluate(global->section, global->entry, frame).result;
  begun_globals_.pop_back();
  if (!profile_.globals.Is(profile::Globals::kEachUse))
    globals_.emplace(identifier, KnownGlobal{result, events == events_});
  return result;
}

bool Evaluator::MayAct(const ruxcomp::Value& value) const {
  switch (language::ClassOf(value.index())) {
    case language::CLASS_Value:
      return profile_.action_order.Is(profile::ActionOrder::kWhenUsed);
    case language::CLASS_Global: {
      const GlobalEntry* global = plan_.Global(value.index());
      return global != nullptr &&
             readings_.OfValue(KeyOf(global->section, global->entry)) == nullptr;
    }
    default:
      return false;
  }
}

std::vector<Result> Evaluator::AccessParts(const ruxcomp::Entry& entry, Frame& frame) {
  std::vector<Result> parts = {Result::Of(language::OrdinalOf(entry.value().index()))};
  const ruxcomp::Values values = entry.values();
  for (std::size_t i = 1; i < values.size(); ++i) {
    // Nothing is calculated with the numbers of an address that are in the file.
    const bool is_address = i < kFirstData && IsStored(values[i]);
    parts.push_back(is_address ? Result::Of(values[i].number()) : Operand(values[i], frame));
  }
  return parts;
}

Result Evaluator::Access(bool is_write, const ruxcomp::Entry& entry, Frame& frame) {
  const std::vector<Result> parts = AccessParts(entry, frame);
  if (is_write) ++events_;
  AccessKey key;
  for (const Result& part : parts) {
    if (!part.IsNumber()) {
      if (is_write) Observe([&](Observer& each) { each.OpenWrite(parts); });
      return part;
    }
    key.push_back(Bits(part.number()));
  }
  const auto result = [&]() -> Result {
    if (!is_write) {
      const Sequence* given = readings_.OfAccess(key);
      return given != nullptr ? Next(*given) : Result::NoReading("no reading of " + TextOf(key));
    }
    if (!profile_.write_result.stated) return Unstated(profile_.write_result);
    if (profile_.write_result.Is(profile::WriteResult::kZero)) return Result::Of(0);
    const bool has_data = key.size() > kFirstData;
    return has_data && profile_.write_result.Is(profile::WriteResult::kData)
               ? parts[kFirstData]
               : Result::Nothing("a write yields no number");
  }();
  Observe([&](Observer& each) { each.Access(key, is_write, result); });
  return result;
}

Result Evaluator::Next(const Sequence& sequence) {
  std::size_t& taken = taken_[&sequence];
  const Reading& reading = sequence[std::min(taken, sequence.size() - 1)];
  ++taken;
  if (sequence.size() > 1) ++events_;
  return arithmetic_.Given(reading);
}

}  // namespace rux::evaluation
