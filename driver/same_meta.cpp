#include "driver/same_meta.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "compiled/file.h"  // IWYU pragma: keep
#include "diagnostics/diagnostic.h"
#include "diagnostics/severities.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/formatted_script.h"
#include "driver/other_reader.h"
#include "reader/include_folders.h"
#include "reader/texts.h"
#include "run/run.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/words.h"
#include "sources/source_file.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/memory_file.h"
#include "support/standard_streams.h"
#include "support/workers.h"

namespace rux::driver {
namespace {

// A main script, and those of the changed scripts that it includes or is.
struct FormattedMachine {
  CompileOptions options;
  std::string script;  // as it can be opened
  std::vector<FormattedScript*> changed;
};

// Texts in place of files.
struct ServedTexts {
  std::vector<const FormattedScript*> scripts;
  std::string FormattedScript::*text;
};

// Files are read as they are; what came from standard input has no other place.
ServedTexts TextsBefore(const FormattedMachine& machine) {
  ServedTexts texts{{}, &FormattedScript::text};
  std::copy_if(machine.changed.begin(), machine.changed.end(), std::back_inserter(texts.scripts),
               [](const FormattedScript* script) { return !script->is_file; });
  return texts;
}

ServedTexts TextsAfter(const FormattedMachine& machine) {
  return {{machine.changed.begin(), machine.changed.end()}, &FormattedScript::formatted};
}

// As rux check sees it: the library accepts some errors, settings make warnings of others. What
// settings make an error of keeps nothing from being compared.
bool HasErrors(const run::Result& result, const CompileOptions& options) {
  if (!result.accepted || result.raised) return true;
  const diagnostics::Severities severities = SeveritiesOf(options);
  return std::any_of(result.findings.begin(), result.findings.end(), [&](const auto& finding) {
    const diagnostics::MessageRow& row = *finding.row;
    return row.severity == diagnostics::Severity::kError &&
           severities.RulingOn(row, row.severity).severity == diagnostics::Severity::kError;
  });
}

// Prints the meta file, with no time of creation.
support::ExitStatus PrintMeta(const FormattedMachine& machine, const ServedTexts& texts) {
  const std::vector<std::string> folders = machine.options.all_include_folders();
  const ruxcomp::reader::IncludeFolders include_folders(folders);
  // The reader finds them under every name by which the machine includes their files.
  for (const FormattedScript* script : texts.scripts) {
    ruxcomp::reader::Texts::Put(ruxcomp::language::WithSlashes(script->path), script->*texts.text);
  }
  run::Run run(machine.options.script_name());
  run.ReadAndCheck();
  if (HasErrors(run.result(), machine.options)) return support::ExitStatus::kFindings;
  support::MemoryFile meta(machine.script);
  run.Write([&] {
    if (gccOutput(meta.Path()) == 0) meta.ThrowIncomplete();
  });
  if (run.result().raised) return support::ExitStatus::kFindings;
  char no_time[ruxcomp::language::kWordSize] = {};
  meta.Overwrite(compiled::kTimeOffset, {no_time, sizeof no_time});
  support::PrintOut(meta.Bytes());
  return support::ExitStatus::kDone;
}

// By the whole names of the main scripts.
std::map<std::string, FormattedMachine> MachinesOf(const CompileOptions& options,
                                                   std::vector<FormattedScript>& scripts) {
  CompileOptions changed_ones = options;
  changed_ones.stdin_name.clear();
  changed_ones.scripts.clear();
  std::vector<FormattedScript*> changed;
  for (FormattedScript& script : scripts) {
    if (script.state != FormatState::kChanged) continue;
    changed_ones.scripts.push_back(script.path);
    changed.push_back(&script);
  }
  std::map<std::string, FormattedMachine> machines;
  if (changed.empty()) return machines;
  const std::vector<CompileOptions> runs = WithMainScripts(OptionsPerScript(changed_ones));
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const std::vector<CompileOptions> itself = {runs[i]};
    for (const CompileOptions& run : runs[i].machines.empty() ? itself : runs[i].machines) {
      const std::string script = sources::ToOpenablePath(run.script_name());
      FormattedMachine& machine =
          machines.try_emplace(support::WholeName(script), FormattedMachine{run, script, {}})
              .first->second;
      machine.changed.push_back(changed[i]);
    }
  }
  return machines;
}

// Why the scripts of a machine stay as they are.
enum class Obstacle { kErrors, kOtherMeta, kTrouble };

std::string ReasonOf(Obstacle obstacle, const std::string& named, const std::string& main) {
  switch (obstacle) {
    case Obstacle::kErrors:
      return fmt::format("{} has errors; see rux check {}", named, main);
    case Obstacle::kOtherMeta:
      return fmt::format("{} would compile to another meta file", named);
    default:
      return fmt::format("cannot find out what {} compiles to", main);
  }
}

void Refuse(const FormattedMachine& machine, Obstacle obstacle) {
  for (FormattedScript* script : machine.changed) {
    const bool is_itself = support::WholeName(script->path) == support::WholeName(machine.script);
    const std::string named =
        is_itself ? "the script" : fmt::format("{}, which includes it,", machine.script);
    script->Refuse(0, ReasonOf(obstacle, named, machine.script));
    if (obstacle == Obstacle::kTrouble) script->state = FormatState::kUnreadable;
  }
}

bool IsTrouble(const support::JobResult& job) {
  return job.signal != 0 || job.status == support::ExitStatus::kTrouble;
}

std::optional<Obstacle> ObstacleOf(const support::JobResult& before,
                                   const support::JobResult& after) {
  if (IsTrouble(before) || IsTrouble(after)) return Obstacle::kTrouble;
  if (before.status != support::ExitStatus::kDone) return Obstacle::kErrors;
  const bool is_same = after.status == before.status && after.output == before.output;
  return is_same ? std::nullopt : std::optional(Obstacle::kOtherMeta);
}

// Refuses the scripts of those that do not compile, or not to the same.
void CompareMachines(const std::vector<const FormattedMachine*>& machines) {
  support::JobResult before;
  support::RunJobs(
      2 * machines.size(), std::max(std::thread::hardware_concurrency(), 1u),
      [&](std::size_t i) {
        const FormattedMachine& machine = *machines[i / 2];
        return PrintMeta(machine, i % 2 == 0 ? TextsBefore(machine) : TextsAfter(machine));
      },
      [&](std::size_t i, const support::JobResult& done) {
        support::PrintError(done.errors);
        if (i % 2 == 0) {
          before = done;
        } else if (const auto obstacle = ObstacleOf(before, done)) {
          Refuse(*machines[i / 2], *obstacle);
        }
      },
      [] {});
}

}  // namespace

void RefuseOtherMeaning(const CompileOptions& options, std::vector<FormattedScript>& scripts) {
  std::map<std::string, FormattedMachine> machines = MachinesOf(options, scripts);
  if (!machines.empty()) RefuseOtherReader("compare what formatted scripts compile to");
  std::vector<const FormattedMachine*> to_compare;
  to_compare.reserve(machines.size());
  for (const auto& [name, machine] : machines) to_compare.push_back(&machine);
  // What is left of a machine after some of its scripts were refused is compared again.
  while (!to_compare.empty()) {
    CompareMachines(to_compare);
    to_compare.clear();
    for (auto& [name, machine] : machines) {
      std::vector<FormattedScript*>& changed = machine.changed;
      const auto refused = std::remove_if(changed.begin(), changed.end(), [](const auto* script) {
        return script->state != FormatState::kChanged;
      });
      if (refused == changed.end()) continue;
      changed.erase(refused, changed.end());
      if (!changed.empty()) to_compare.push_back(&machine);
    }
  }
}

}  // namespace rux::driver
