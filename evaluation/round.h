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

  // What the profile has before the first round: VALUE_INIT of the sensors and of their groups.
  void Start(const std::vector<Target>& targets);
  // Of each target, in order. Hooks that the profile does not state are not evaluated.
  std::vector<Outcome> Next(const std::vector<Target>& targets);

 private:
  Outcome OutcomeOf(const Target& target);
  Outcome Read(const ruxcomp::Section& sensor);
  // The value of that fixed name, if the section has it.
  void Hook(const ruxcomp::Section& section, const char* name);
  std::vector<ruxcomp::Section> GroupsOf(const std::vector<Target>& targets) const;

  Evaluator& evaluator_;
  std::map<std::uint32_t, BandState> bands_;  // by the ordinals of sensors
};

}  // namespace rux::evaluation

#endif  // EVALUATION_ROUND_H_
