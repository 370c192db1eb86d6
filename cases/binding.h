// A case with what its texts name in a machine.
#ifndef CASES_BINDING_H_
#define CASES_BINDING_H_

#include <vector>

#include "cases/case.h"
#include "evaluation/arithmetic.h"
#include "evaluation/readings.h"
#include "evaluation/target.h"
#include "machine/machine.h"

namespace rux::cases {

struct BoundReading {
  const GivenReading* given;
  evaluation::ReadingKey key;
};

// The case must outlive it.
struct BoundRound {
  const CaseRound* round;
  std::vector<BoundReading> readings = {};
  std::vector<evaluation::Target> targets = {};  // as round->expected
};

// Its rounds. Throws a Failure that names the file and the line of what the machine does not have,
// or has otherwise.
std::vector<BoundRound> Bind(const machine::Machine& machine,
                             const evaluation::Arithmetic& arithmetic, const Case& source);

}  // namespace rux::cases

#endif  // CASES_BINDING_H_
