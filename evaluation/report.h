// The result of one target, for people and for programs.
#ifndef EVALUATION_REPORT_H_
#define EVALUATION_REPORT_H_

#include <string>

#include "evaluation/result.h"
#include "evaluation/round.h"
#include "evaluation/target.h"
#include "evaluation/trace.h"
#include "machine/machine.h"
#include "profile/profile.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::evaluation {

struct Report {
  const machine::Machine& machine;
  const profile::Profile& profile;
  const Target& target;
  const Outcome& outcome;
  const Effects& effects;
  const Trace* trace;  // null: not asked for
};

// The profile, the value with its unit, the band with the lines of its limits, the calls, what was
// written, and why that may not be all; then the trace.
void WriteText(const Report& report, support::TextStream& out);

// docs/eval.schema.json
void WriteJson(const Report& report, support::JsonObject& json);

// Members "kind", and "number" or "reason".
void WriteResult(const Result& result, support::JsonObject& json);

}  // namespace rux::evaluation

#endif  // EVALUATION_REPORT_H_
