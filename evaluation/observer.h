// What watches an evaluation: a trace, the coverage of tests.
#ifndef EVALUATION_OBSERVER_H_
#define EVALUATION_OBSERVER_H_

#include <cstdint>
#include <vector>

#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {

// Calls come in the order of the evaluation; Begin and End are nested, and so are Call and Return.
// The texts and handles are those of the machine.
class Observer {
 public:
  virtual ~Observer() = default;

  virtual void Begin(const ruxcomp::Section&, const ruxcomp::Entry&) {}
  virtual void End(const ruxcomp::Section&, const ruxcomp::Entry&, const Result&) {}
  // A number that is not evaluated is in place of the value: a reading, or THEORY.
  virtual void Given(const ruxcomp::Section&, const ruxcomp::Entry&, const Result&) {}
  // An action is called with these arguments.
  virtual void Call(const ruxcomp::Section&, const std::vector<Result>&) {}
  // What the last action that was called, and has no result yet, yields.
  virtual void Return(const Result&) {}
  virtual void Access(const AccessKey&, bool /*is_write*/, const Result&) {}
  // A write, of some of whose parts the numbers are not known.
  virtual void OpenWrite(const std::vector<Result>& /*parts*/) {}
  // More may be called and written here than is known, for that reason.
  virtual void Open(const Result& /*why*/) {}
  virtual void Cell(const ruxcomp::Section& /*table*/, std::uint32_t /*index*/) {}
  // What the entry asks holds, or does not.
  virtual void Branch(const ruxcomp::Section&, const ruxcomp::Entry&, bool) {}
};

}  // namespace rux::evaluation

#endif  // EVALUATION_OBSERVER_H_
