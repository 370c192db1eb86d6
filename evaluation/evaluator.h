// Evaluates values of a machine, as the language and a profile have them.
#ifndef EVALUATION_EVALUATOR_H_
#define EVALUATION_EVALUATOR_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "evaluation/arithmetic.h"
#include "evaluation/change.h"
#include "evaluation/observer.h"
#include "evaluation/plan.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "profile/profile.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {

// Values are nested no deeper, and a round takes no more steps unless an evaluator has another
// bound: beyond that is an error. A step is a value with one operand; one with more counts as more.
inline constexpr std::size_t kDeepestValue = 200;
inline constexpr std::size_t kMostSteps = 100000;

class Evaluator {
 public:
  // All of them must outlive this.
  Evaluator(const Plan& plan, const profile::Profile& profile, const Readings& readings,
            std::size_t most_steps = kMostSteps)
      : plan_(plan),
        profile_(profile),
        arithmetic_(profile),
        readings_(readings),
        most_steps_(most_steps) {}

  void AddObserver(Observer& observer) { observers_.push_back(&observer); }

  // From now on, the machine is as if it had the change, which must outlive this; null: as it is.
  void Try(const Change* change) { change_ = change; }
  const Change* change() const { return change_; }

  // Globals are evaluated anew, and steps are counted from 0.
  void BeginRound();

  // A value of a section other than an action; of a global, as where it is used.
  Result ValueOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry);
  // The calls of a repeater; what the last one yields.
  Result Repeat(const ruxcomp::Section& section, const ruxcomp::Entry& entry);
  Result Call(const ruxcomp::Section& action, const std::vector<Result>& arguments);

  // Reports that a number is in place of the value of an entry.
  void Give(const ruxcomp::Section& section, const ruxcomp::Entry& entry, const Result& number);
  // Reports that more may be called and written than is known, for that reason, which it returns.
  Result LeaveOpen(Result why);

  const profile::Profile& profile() const { return profile_; }
  const Arithmetic& arithmetic() const { return arithmetic_; }

 private:
  // A call that is being evaluated; of a value outside of actions, one without an action.
  struct Frame {
    const ActionValues* action = nullptr;
    std::vector<Result> arguments = {};
    std::optional<Number> round = {};  // of a repeater
    bool is_ipmi = false;
    std::unordered_map<std::uint32_t, Result> values = {};  // by identifiers
    std::vector<std::uint32_t> begun = {};                  // that have no result yet
  };
  // What a value does to the order of an action's values, besides its result.
  struct Step {
    Result result;
    bool skips_next = false;
    std::optional<std::uint32_t> next = {};  // the identifier of the value to go on at
    bool is_open = false;                    // a condition that is not known
  };

  Step Evaluate(const ruxcomp::Section& section, const ruxcomp::Entry& entry, Frame& frame);
  Step StepOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry, Frame& frame);
  Step Control(profile::Meaning meaning, const ruxcomp::Section& section,
               const ruxcomp::Entry& entry, Frame& frame);
  Result Plain(profile::Meaning meaning, const ruxcomp::Section& section,
               const ruxcomp::Entry& entry, Frame& frame);
  Result Calculation(const ruxcomp::Section& section, const ruxcomp::Entry& entry, Frame& frame);
  Result Access(bool is_write, const ruxcomp::Entry& entry, Frame& frame);
  // The type, and what an access is known by.
  std::vector<Result> AccessParts(const ruxcomp::Entry& entry, Frame& frame);
  Result List(profile::Meaning meaning, const ruxcomp::Entry& entry, Frame& frame);
  Result Cell(const ruxcomp::Entry& entry, Frame& frame);
  // A call whose action is the at-th value, and whose arguments follow it.
  Result CallAt(std::size_t at, const ruxcomp::Entry& entry, Frame& frame);

  Result Operand(const ruxcomp::Value& value, Frame& frame);
  std::vector<Result> Operands(const ruxcomp::Entry& entry, std::size_t first, Frame& frame);
  Result Argument(std::uint32_t number, const Frame& frame) const;
  Result Global(std::uint32_t identifier);
  // Whether evaluating the operand may call or write.
  bool MayAct(const ruxcomp::Value& value) const;
  // Of a comparison that is not known: what it would have evaluated is not known either.
  Result Undecided(const ruxcomp::Entry& entry, Result why);
  Result LocalValue(const ruxcomp::Value& value, Frame& frame);

  Result Run(Frame& frame);
  Result RunInOrder(const std::vector<ruxcomp::Entry>& order, const ruxcomp::Entry& last,
                    Frame& frame);
  Result CallWith(std::uint32_t action, Frame frame);

  Result TooManySteps();
  // The next reading of a sequence.
  Result Next(const Sequence& sequence);

  template <class Notify>
  void Observe(Notify notify) {
    for (Observer* observer : observers_) notify(*observer);
  }

  const Plan& plan_;
  const profile::Profile& profile_;
  const Arithmetic arithmetic_;
  const Readings& readings_;
  std::vector<Observer*> observers_;
  const Change* change_ = nullptr;

  struct KnownGlobal {
    Result result;
    bool is_fixed;  // whether another evaluation comes to the same, and does nothing
  };

  std::unordered_map<std::uint32_t, KnownGlobal> globals_;  // of this round
  std::vector<std::uint32_t> begun_globals_;
  std::map<const Sequence*, std::size_t> taken_;  // how many of each
  std::vector<const Frame*> calls_;               // that are being evaluated
  std::size_t depth_ = 0;
  std::size_t steps_ = 0;
  const std::size_t most_steps_;
  std::size_t events_ = 0;  // calls, writes, and readings that are not the same each time
};

}  // namespace rux::evaluation

#endif  // EVALUATION_EVALUATOR_H_
