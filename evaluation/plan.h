// A machine laid out for evaluation: made once, used for any number of cases.
#ifndef EVALUATION_PLAN_H_
#define EVALUATION_PLAN_H_

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "machine/machine.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {

// The values of an action.
struct ActionValues {
  ruxcomp::Section section;
  std::vector<ruxcomp::Entry> as_written;  // VALUE_1 and so on
  std::vector<ruxcomp::Entry> by_number;   // the same
  ruxcomp::Entry value;
  ruxcomp::Entry ipmi;
};

struct GlobalEntry {
  ruxcomp::Section section;
  ruxcomp::Entry entry;
};

// Takes time and memory by the number of actions and globals. The machine must outlive it.
class Plan {
 public:
  explicit Plan(const machine::Machine& machine);

  const machine::Machine& machine() const { return machine_; }
  // By the indices of their names; null when there is none. Of several of one name, the first.
  const ActionValues* Action(std::uint32_t index) const;
  const GlobalEntry* Global(std::uint32_t index) const;

 private:
  const machine::Machine& machine_;
  std::unordered_map<std::uint32_t, ActionValues> actions_;
  std::unordered_map<std::uint32_t, GlobalEntry> globals_;
};

}  // namespace rux::evaluation

#endif  // EVALUATION_PLAN_H_
