// Calls of actions, and the order of their values.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "evaluation/arithmetic.h"
#include "evaluation/evaluator.h"
#include "evaluation/observer.h"
#include "evaluation/plan.h"
#include "evaluation/result.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::evaluation {

Result Evaluator::Call(const ruxcomp::Section& action, const std::vector<Result>& arguments) {
  Frame frame;
  frame.arguments = arguments;
  return CallWith(action.entry(RUX_ENTRY_NAME).value().index(), std::move(frame));
}

Result Evaluator::CallAt(std::size_t at, const ruxcomp::Entry& entry, Frame& frame) {
  Frame callee;
  callee.arguments = Operands(entry, at + 1, frame);
  callee.is_ipmi = frame.is_ipmi;
  return CallWith(entry.value(at).index(), std::move(callee));
}

Result Evaluator::Repeat(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  if (!profile_.repeaters.stated) return LeaveOpen(Unstated(profile_.repeaters));
  if (profile_.repeaters.Is(profile::Repeaters::kIgnored))
    return Result::Nothing("repeaters do not run");
  if (!profile_.repeater_count.stated) return LeaveOpen(Unstated(profile_.repeater_count));
  if (entry.values().size() < 2 || entry.value(0).kind() != RUX_DATA_NUMBER)
    return LeaveOpen(Result::Unknown("the file does not have how often it repeats"));
  const bool has_round = !profile_.repeater_count.Is(profile::RepeaterCount::kNone);
  constexpr std::size_t kFirstArgument = 2;
  const bool has_arguments = entry.values().size() > kFirstArgument;
  if (has_round && has_arguments && profile_.first_argument.Is(profile::FirstArgument::kArg0)) {
    return LeaveOpen(
        Result::Unknown("the profile has ARG0 both as first_argument and as "
                        "repeater_count"));
  }
  Observe([&](Observer& each) { each.Begin(section, entry); });
  Result last = Result::Nothing("it repeats 0 times");
  const Number first = profile_.repeater_count.Is(profile::RepeaterCount::kArg0FromOne) ? 1 : 0;
  for (std::uint32_t i = 0; i < entry.value(0).number(); ++i) {
    if (++steps_ > most_steps_) {
      last = TooManySteps();
      break;
    }
    Frame frame;
    if (has_round) frame.round = first + i;
    Frame callee;
    callee.round = frame.round;
    callee.arguments = Operands(entry, kFirstArgument, frame);
    last = CallWith(entry.value(1).index(), std::move(callee));
  }
  Observe([&](Observer& each) { each.End(section, entry, last); });
  return last;
}

Result Evaluator::TooManySteps() {
  return LeaveOpen(Result::Error(fmt::format("more than {} steps", most_steps_)));
}

Result Evaluator::CallWith(std::uint32_t action, Frame frame) {
  frame.action = plan_.Action(action);
  if (frame.action == nullptr) return LeaveOpen(Result::Unknown("the action is not in the file"));
  const ruxcomp::Section& section = frame.action->section;
  const bool is_begun = std::any_of(calls_.begin(), calls_.end(), [&](const Frame* each) {
    return each->action == frame.action && each->arguments == frame.arguments;
  });
  if (is_begun) return LeaveOpen(Result::Error(fmt::format("{} calls itself", section.name())));
  ++events_;
  Observe([&](Observer& each) { each.Call(section, frame.arguments); });
  calls_.push_back(&frame);
  const Result result = Run(frame);
  calls_.pop_back();
  Observe([&](Observer& each) { each.Return(result); });
  return result;
}

Result Evaluator::Run(Frame& frame) {
  const ActionValues& values = *frame.action;
  ruxcomp::Entry entry = values.value;
  if (frame.is_ipmi && values.ipmi) {
    if (!profile_.ipmi_calls.stated) return LeaveOpen(Unstated(profile_.ipmi_calls));
    if (profile_.ipmi_calls.Is(profile::IpmiCalls::kValueIpmi)) entry = values.ipmi;
  }
  // Without other values there is only one order.
  const bool has_order = !values.as_written.empty();
  if (has_order && !profile_.action_order.stated) return LeaveOpen(Unstated(profile_.action_order));
  if (has_order && !profile_.action_order.Is(profile::ActionOrder::kWhenUsed)) {
    const bool by_number = profile_.action_order.Is(profile::ActionOrder::kByNumber);
    const Result last = RunInOrder(by_number ? values.by_number : values.as_written, entry, frame);
    if (entry) return last;
  } else if (entry) {
    return Evaluate(values.section, entry, frame).result;
  }
  return Result::Nothing(fmt::format("{} has no VALUE", values.section.name()));
}

// What the last one yields, which comes after the others. A condition that is unknown leaves
// unknown what comes after it.
Result Evaluator::RunInOrder(const std::vector<ruxcomp::Entry>& order, const ruxcomp::Entry& last,
                             Frame& frame) {
  const ruxcomp::Section& section = frame.action->section;
  for (std::size_t at = 0; at < order.size();) {
    const Step step = Evaluate(section, order[at], frame);
    if (steps_ > most_steps_ || step.is_open) return step.result;
    frame.values.insert_or_assign(order[at].identifier(), step.result);
    at += step.skips_next ? 2 : 1;
    if (!step.next) {
      if (at > order.size()) return Result::Nothing(fmt::format("{} skips it", section.name()));
      continue;
    }
    const auto next = std::find_if(order.begin(), order.end(), [&](const ruxcomp::Entry& each) {
      return each.identifier() == *step.next;
    });
    if (next == order.end()) return LeaveOpen(Result::Unknown("a goto leads to no value"));
    at = static_cast<std::size_t>(next - order.begin());
  }
  return last ? Evaluate(section, last, frame).result : Result::Unknown("");
}

Result Evaluator::LocalValue(const ruxcomp::Value& value, Frame& frame) {
  const auto known = frame.values.find(value.index());
  if (known != frame.values.end()) return known->second;
  const std::string name = fmt::format("VALUE_{}", value.text());
  if (frame.action == nullptr) return Result::Unknown(name + " is of no action");
  if (!profile_.action_order.Is(profile::ActionOrder::kWhenUsed))
    return Result::Unknown(name + " is not evaluated before");
  const std::uint32_t identifier = value.index();
  if (std::find(frame.begun.begin(), frame.begun.end(), identifier) != frame.begun.end())
    return Result::Error(name + " uses itself");
  const ruxcomp::Entry entry = frame.action->section.entry(identifier);
  if (!entry) return Result::Unknown(name + " is not in the file");
  frame.begun.push_back(identifier);
  const Result result = Evaluate(frame.action->section, entry, frame).result;
  frame.begun.pop_back();
  frame.values.insert_or_assign(identifier, result);
  return result;
}

}  // namespace rux::evaluation
