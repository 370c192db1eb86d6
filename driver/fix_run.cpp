#include "driver/fix_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/severities.h"
#include "driver/checked_state.h"
#include "driver/common_findings.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/fix_report.h"
#include "driver/fixed_script.h"
#include "driver/machines.h"
#include "driver/other_reader.h"
#include "driver/script_list.h"
#include "fixing/edits.h"
#include "reader/texts.h"
#include "ruxcomp/language/paths.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_file.h"
#include "support/utf8.h"

namespace rux::driver {
namespace {

using ruxcomp::reader::Texts;
using support::ExitStatus;

// A finding that has a fix.
struct Fixable {
  std::size_t file;
  const diagnostics::MessageRow* row;
  diagnostics::Fix fix;
};

// A main script with the files that it includes.
struct Machine {
  CompileOptions options;            // of a run that finds all
  diagnostics::Severities choice;    // what is fixed
  std::string script;                // as it can be opened
  bool is_whole = false;             // all of its files are to be fixed
  std::set<std::size_t> files = {};  // of the run's
  CheckedState before = {};
  CheckedState now = {};
  bool is_stale = false;     // a text changed since
  std::string failure = {};  // why it cannot be checked
  std::vector<Fixable> fixable = {};
};

// A fix that some machines find.
struct Candidate {
  diagnostics::Fix fix;
  FixMade made;
  bool is_about_unused;
  std::size_t machines;
};
// By file, first byte, last byte and text.
using Candidates =
    std::map<std::tuple<std::size_t, std::uint32_t, std::uint32_t, std::string>, Candidate>;

class FixRun {
 public:
  explicit FixRun(FixOptions options) : options_(std::move(options)) {}

  ExitStatus Run() {
    AddGiven();
    for (Machine& machine : machines_) {
      CheckFirst(machine);
      if (!machine.failure.empty()) failures_ += "rux: error: " + machine.failure + '\n';
    }
    std::size_t round = 0;
    while (round < kMostRounds && FixOnce()) ++round;
    RefuseWorse();
    for (FixedScript& script : scripts_) script.SortFixes();
    const bool writes = !options_.is_dry && !options_.diffs;
    if (writes) Replace();
    Report(writes);
    return Status(writes, round == kMostRounds);
  }

 private:
  // A fix may bring to light what the next one mends. More in a row do not come to an end.
  static constexpr std::size_t kMostRounds = 100;

  void AddGiven() {
    for (const CompileOptions& run : WithMainScripts(OptionsPerScript(options_.scripts))) {
      if (run.machines.empty()) AddMachine(run).is_whole = true;
      for (const CompileOptions& machine : run.machines) {
        AddMachine(machine);
        parts_.insert(support::WholeName(machine.part));
      }
    }
  }

  Machine& AddMachine(CompileOptions options) {
    const std::string script = sources::ToOpenablePath(options.script_name());
    const auto [known, is_new] = by_name_.try_emplace(support::WholeName(script), nullptr);
    if (!is_new) return *known->second;
    diagnostics::Severities choice = SeveritiesOf(options);
    options.warnings.clear();
    options.part.clear();
    options.left_out.clear();
    options.reporting.all = true;
    machines_.push_back({std::move(options), std::move(choice), script});
    known->second = &machines_.back();
    return machines_.back();
  }

  void CheckFirst(Machine& machine) {
    Texts::Clear();
    machine.before = CheckState(machine);
    machine.now = machine.before;
    machine.is_stale = std::any_of(machine.files.begin(), machine.files.end(),
                                   [&](std::size_t file) { return scripts_[file].is_changed(); });
  }

  void CheckAgain(Machine& machine) {
    if (!machine.is_stale) return;
    Texts::Clear();
    for (const FixedScript& script : scripts_) {
      if (!script.is_changed()) continue;
      Texts::Put(ruxcomp::language::WithSlashes(script.path), script.fixed);
    }
    machine.now = CheckState(machine);
    machine.is_stale = false;
  }

  // Notes what can be fixed.
  CheckedState CheckState(Machine& machine) {
    machine.fixable.clear();
    const Checked checked = Check(machine.options);
    machine.failure = checked.failure.value_or("");
    std::map<const support::TextFile*, std::size_t> files;
    for (const sources::Opening& opening : checked.found.sources.openings()) {
      const std::size_t file = NumberOf(*opening.file);
      files.emplace(opening.file, file);
      machine.files.insert(file);
    }
    for (const diagnostics::Diagnostic& diagnostic : checked.found.report.diagnostics) {
      const auto file = files.find(diagnostic.at.file);
      if (file == files.end() || !IsToBeFixed(machine, file->second, diagnostic)) continue;
      const std::optional<diagnostics::Fix> fix = FixOf(diagnostic);
      if (fix) machine.fixable.push_back({file->second, diagnostic.row, *fix});
    }
    return CheckedState(checked);
  }

  std::size_t NumberOf(const sources::SourceFile& file) {
    const auto [known, is_new] =
        numbers_.try_emplace(support::WholeName(file.path()), scripts_.size());
    if (is_new) {
      FixedScript& script = scripts_.emplace_back();
      script.path = file.path();
      script.text = file.text();
      script.fixed = script.text;
    }
    return known->second;
  }

  bool IsToBeFixed(const Machine& machine, std::size_t file,
                   const diagnostics::Diagnostic& diagnostic) const {
    if (machine.choice.RulingOn(*diagnostic.row, diagnostic.severity).is_dropped) return false;
    if (!scripts_[file].refusal.empty()) return false;
    const std::string& path = scripts_[file].path;
    const bool is_given = machine.is_whole || parts_.count(support::WholeName(path)) != 0;
    std::error_code ignored;
    return is_given && std::filesystem::is_regular_file(path, ignored);
  }

  // Answers whether there was anything to fix.
  bool FixOnce() {
    for (Machine& machine : machines_) CheckAgain(machine);
    Candidates candidates = FindCandidates();
    while (AddWitnesses(candidates)) candidates = FindCandidates();
    std::map<std::size_t, std::vector<diagnostics::Fix>> chosen;
    for (auto& [key, candidate] : candidates) {
      const std::size_t file = std::get<0>(key);
      std::vector<diagnostics::Fix>& fixes = chosen[file];
      if (!fixes.empty() && fixing::Collide(fixes.back(), candidate.fix)) continue;
      fixes.push_back(candidate.fix);
      scripts_[file].fixes.push_back(std::move(candidate.made));
    }
    for (auto& [file, fixes] : chosen) {
      FixedScript& script = scripts_[file];
      former_.emplace(file, script.fixed);
      script.fixed = fixing::Fixed(script.fixed, std::move(fixes));
      // Each may be right for another machine.
      if (former_.count({file, script.fixed}) != 0) script.Refuse("one fix undoes another");
      MarkStale(file);
    }
    return !chosen.empty();
  }

  void MarkStale(std::size_t file) {
    for (Machine& machine : machines_) machine.is_stale |= machine.files.count(file) != 0;
  }

  Candidates FindCandidates() {
    for (FixedScript& script : scripts_) script.offered = 0;
    Candidates candidates;
    std::set<Candidates::key_type> offered;
    for (const Machine& machine : machines_) {
      for (const auto& [file, row, fix] : machine.fixable) {
        const Candidates::key_type key(file, fix.range.begin, fix.range.end, fix.text);
        if (!fix.is_safe && !options_.takes_offers) {
          if (offered.insert(key).second) ++scripts_[file].offered;
          continue;
        }
        const auto [known, is_new] =
            candidates.try_emplace(key, Candidate{fix, {}, IsAboutUnused(*row), 0});
        if (is_new) known->second.made = MadeOf(scripts_[file], *row, fix);
        ++known->second.machines;
      }
    }
    for (auto at = candidates.begin(); at != candidates.end();) {
      const bool is_common = at->second.machines == CountWith(std::get<0>(at->first));
      at = at->second.is_about_unused && !is_common ? candidates.erase(at) : std::next(at);
    }
    return candidates;
  }

  std::size_t CountWith(std::size_t file) const {
    return static_cast<std::size_t>(
        std::count_if(machines_.begin(), machines_.end(),
                      [&](const Machine& machine) { return machine.files.count(file) != 0; }));
  }

  static FixMade MadeOf(const FixedScript& script, const diagnostics::MessageRow& row,
                        const diagnostics::Fix& fix) {
    const support::ByteRange range = fix.range;
    const std::string_view text = script.fixed;
    const std::string_view before = text.substr(0, range.begin);
    const std::size_t start = before.rfind('\n') + 1;
    const auto lines = std::count(before.begin(), before.end(), '\n');
    return {std::string(row.id), static_cast<std::uint32_t>(lines + 1),
            support::CharacterCounts(before.substr(start)).Before(range.begin - start) + 1,
            FixText(fix, text.substr(range.begin, range.end - range.begin))};
  }

  // The other machines that have the files: what is fixed for one may be wrong in another.
  bool AddWitnesses(const Candidates& candidates) {
    const std::size_t count = machines_.size();
    for (const auto& [key, candidate] : candidates) {
      const std::size_t file = std::get<0>(key);
      if (!with_witnesses_.insert(file).second) continue;
      for (const std::string& main : FindMachinesWith(scripts_[file].path, options_.scripts)) {
        CompileOptions options = options_.scripts;
        options.scripts = {main};
        AddMachine(OptionsPerScript(options).front());
      }
    }
    for (std::size_t i = count; i < machines_.size(); ++i) {
      CheckFirst(machines_[i]);
      CheckAgain(machines_[i]);
    }
    return machines_.size() > count;
  }

  // What is left of a machine after some of its scripts were refused is checked again.
  void RefuseWorse() {
    for (bool is_done = false; !is_done;) {
      is_done = true;
      for (Machine& machine : machines_) {
        CheckAgain(machine);
        const std::string why = machine.now.WhyWorseThan(machine.before);
        if (!why.empty()) is_done &= !Refuse(machine, why);
      }
    }
  }

  bool Refuse(const Machine& machine, const std::string& why) {
    bool are_any = false;
    for (const std::size_t file : machine.files) {
      FixedScript& script = scripts_[file];
      if (!script.is_changed()) continue;
      script.Refuse(fmt::format("the fixes would give {} {}", machine.script, why));
      MarkStale(file);
      are_any = true;
    }
    return are_any;
  }

  // All of them, or none.
  void Replace() const {
    std::vector<support::NewFile> files;
    for (const FixedScript& script : scripts_) {
      if (script.is_changed()) files.push_back({script.path, script.fixed});
    }
    support::PutInPlace(files);
  }

  void Report(bool writes) const {
    if (options_.form == "json") {
      support::PrintError(failures_);
      return support::PrintOut(FixesJson(scripts_, writes));
    }
    if (options_.diffs) {
      support::PrintAsIs("the script", DiffText(scripts_), "redirect the output");
    } else {
      support::PrintOut(FixesText(scripts_));
    }
    support::PrintError(failures_ + RefusalsText(scripts_) + SummaryText(scripts_, writes));
  }

  ExitStatus Status(bool writes, bool are_more) const {
    if (!failures_.empty()) return ExitStatus::kTrouble;
    const bool are_left =
        are_more || std::any_of(scripts_.begin(), scripts_.end(), [&](const FixedScript& script) {
          return !script.refusal.empty() || (!writes && script.is_changed());
        });
    return are_left ? ExitStatus::kFindings : ExitStatus::kDone;
  }

  const FixOptions options_;
  std::deque<Machine> machines_;
  std::map<std::string, Machine*> by_name_;  // of the main script
  std::set<std::string> parts_;              // that are to be fixed, by whole names
  std::vector<FixedScript> scripts_;
  std::map<std::string, std::size_t> numbers_;  // of scripts, by whole names
  std::set<std::size_t> with_witnesses_;
  std::string failures_;                                  // a line each
  std::set<std::pair<std::size_t, std::string>> former_;  // texts of scripts
};

}  // namespace

support::ExitStatus FixScripts(FixOptions options) {
  ExpandScripts(options.scripts);
  const std::vector<std::string>& scripts = options.scripts.scripts;
  if (std::find(scripts.begin(), scripts.end(), CompileOptions::kStandardInput) != scripts.end()) {
    throw support::Failure(ExitStatus::kWrongUsage, "cannot fix standard input: it is not a file");
  }
  if (options.diffs && options.form != "human") {
    throw support::Failure(ExitStatus::kWrongUsage, "--format {} cannot be used with --diff",
                           options.form);
  }
  RefuseOtherReader("check fixed scripts");
  options.scripts.purpose = diagnostics::Purpose::kFix;
  return FixRun(std::move(options)).Run();
}

}  // namespace rux::driver
