// rux eval MACHINE PATH
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "evaluation/evaluator.h"
#include "evaluation/plan.h"
#include "evaluation/readings.h"
#include "evaluation/report.h"
#include "evaluation/result.h"
#include "evaluation/round.h"
#include "evaluation/target.h"
#include "evaluation/trace.h"
#include "machine/machine.h"
#include "profile/profile.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/standard_streams.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/machine_arguments.h"
#include "tool/profile_arguments.h"

namespace rux::tool {
namespace {

struct EvalOptions {
  MachineOptions machine;
  std::string path;
  std::string profile;
  std::vector<std::string> readings;
  std::vector<std::string> arguments;
  bool start = false;
  bool stop = false;
  bool trace = false;
  bool json = false;
};

evaluation::Readings ReadingsOf(const EvalOptions& options, const machine::Machine& machine) {
  evaluation::Readings readings;
  for (const std::string& text : options.readings) {
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos) {
      throw support::Failure(support::ExitStatus::kWrongUsage,
                             "--reading must be KEY=NUMBER, found {}", text);
    }
    readings.Set(machine, text.substr(0, sign),
                 {evaluation::Readings::NumberOf(text.substr(sign + 1))});
  }
  return readings;
}

std::vector<evaluation::Result> ArgumentsOf(const EvalOptions& options,
                                            const evaluation::Evaluator& evaluator) {
  std::vector<evaluation::Result> arguments;
  arguments.reserve(options.arguments.size());
  for (const std::string& text : options.arguments)
    arguments.push_back(evaluator.arithmetic().Given(evaluation::Readings::NumberOf(text)));
  return arguments;
}

support::ExitStatus Eval(const EvalOptions& options) {
  const machine::Machine machine = LoadMachine(options.machine);
  const profile::Profile profile = ProfileFor(machine, options.profile);
  evaluation::Target target = evaluation::FindTarget(machine, options.path);
  const evaluation::Readings readings = ReadingsOf(options, machine);
  const evaluation::Plan plan(machine);
  evaluation::Evaluator evaluator(plan, profile, readings);
  evaluation::Effects effects;
  evaluation::Trace trace(machine);
  evaluator.AddObserver(effects);
  if (options.trace) evaluator.AddObserver(trace);
  target.arguments = ArgumentsOf(options, evaluator);
  evaluation::Rounds rounds(evaluator);
  if (options.start) rounds.Start({target});
  const evaluation::Outcome outcome = rounds.Next({target}).front();
  if (options.stop) rounds.Stop({target});
  const evaluation::Report report{machine, profile, target,
                                  outcome, effects, options.trace ? &trace : nullptr};
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (!options.json) return evaluation::WriteText(report, out);
    support::WriteJson(out, [&](support::JsonObject& json) { WriteJson(report, json); });
  });
  return outcome.value.kind() == evaluation::Result::Kind::kError ? support::ExitStatus::kFindings
                                                                  : support::ExitStatus::kDone;
}

}  // namespace

Action SetUpEval(Arguments& arguments) {
  const auto options = std::make_shared<EvalOptions>();
  AddMachine(arguments, options->machine);
  arguments
      .Add("PATH", &options->path,
           "SENSOR/NAME, KIND/NAME/KEY, GLOBAL/KEY, ACTION/NAME or REPEATER/KEY")
      .Required();
  arguments
      .Add("--reading", &options->readings,
           "The NUMBER of a value, or of an access by its parts: TYPE,OPERAND,NUMBER,BUS,BASE")
      .Value("KEY=NUMBER");
  arguments.Add("--argument", &options->arguments, "The next argument of an ACTION")
      .Value("NUMBER");
  AddProfile(arguments, options->profile);
  arguments.Add("--start", &options->start,
                "Begin as the machine starts: with VALUE_INIT, if the profile has it so");
  arguments.Add("--stop", &options->stop,
                "End as the machine stops: with VALUE_DEINIT, if the profile has it so");
  arguments.Add("--trace", &options->trace, "Print every value on the way, with its line");
  arguments.Add("--json", &options->json, "Print JSON (docs/eval.schema.json)");
  AddSearchOptions(arguments, options->machine);
  arguments.Footer(
      "What neither the language, the profile nor a reading says is unknown. The exit status is 1\n"
      "for an error, such as a division by zero.\n\n"
      "Examples:\n"
      "  rux eval board.rux SENSOR/INLET --reading SENSOR/INLET=45 --profile board.profile.json\n"
      "  rux eval board.rux SENSOR/INLET --reading VT_READ,0x10,1,1,0=45 --trace\n"
      "  rux eval board.meta ACTION/SCALE --argument 3 --argument 100");
  return [options] { return Eval(*options); };
}

}  // namespace rux::tool
