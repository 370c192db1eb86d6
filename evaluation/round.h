// One round of a machine: what is asked of it, with the hooks around that a profile has.
#ifndef EVALUATION_ROUND_H_
#define EVALUATION_ROUND_H_

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "evaluation/bands.h"
#include "evaluation/evaluator.h"
#include "evaluation/result.h"
#include "evaluation/target.h"

namespace rux::evaluation {

// The result of a target; of a sensor also its VALUE_IPMI, if it has one, and its band.
struct Outcome {
  Result value;
  std::optional<Result> ipmi = {};
  std::optional<Band> band = {};
};

// Rounds one after the other, in which sensors keep their bands.
class Rounds {
 public:
  // The evaluator must outlive this.
  explicit Rounds(Evaluator& evaluator) : evaluator_(evaluator) {}

  // What the profile has before the first round: VALUE_INIT of the sensors that are watched or
  // targets, and of their groups.
  void Start(const std::vector<Target>& targets);
  // The same after the last round: VALUE_DEINIT.
  void Stop(const std::vector<Target>& targets);
  // From now on, the sensors among these are read in each round, whether they are asked for or not.
  void Watch(const std::vector<Target>& targets);
  // Of each target; they are evaluated in order, and then repeaters. Hooks that the profile does
  // not state are left open.
  std::vector<Outcome> Next(const std::vector<Target>& targets);

 private:
  Outcome OutcomeOf(const Target& target);
  Outcome Read(const ruxcomp::Section& sensor);
  // In place of a value that lacks a reading, if the profile has it so.
  void UseTheory(const ruxcomp::Section& sensor, Result& value);
  // The value of that fixed name, if the section has it and the profile has it evaluated then.
  template <class Option>
  void Hook(const profile::Member<Option>& member, Option when, const ruxcomp::Section& section,
            const char* name);
  // The sensors among the targets, and those that are watched: each once.
  std::vector<ruxcomp::Section> SensorsOf(const std::vector<Target>& targets) const;

  Evaluator& evaluator_;
  std::vector<Target> watched_;
  std::map<std::uint32_t, BandState> bands_;  // by the ordinals of sensors
};

}  // namespace rux::evaluation

#endif  // EVALUATION_ROUND_H_
