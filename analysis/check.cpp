#include "analysis/check.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/findings.h"
#include "analysis/places.h"
#include "analysis/surroundings.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "driver/common_findings.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/part_report.h"
#include "reader/texts.h"
#include "reader/value.h"
#include "run/readers.h"
#include "run/run.h"
#include "sources/main_scripts.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/safe_text.h"
#include "workspace/documents.h"
#include "workspace/folders.h"

namespace rux::analysis {
namespace {

void Enter(const Surroundings& surroundings) {
  std::filesystem::current_path(surroundings.root);
  ruxcomp::reader::Texts::Clear();
  for (const auto& [uri, document] : surroundings.documents.all()) {
    ruxcomp::reader::Texts::Put(workspace::PathFrom(surroundings.root, document->path()),
                                document->text());
  }
}

driver::CompileOptions OptionsFor(const Surroundings& surroundings, const std::string& script) {
  driver::CompileOptions options = surroundings.settings;
  options.scripts = {script};
  return driver::OptionsPerScript(options).front();
}

// What stands below the text, in forms that have room for it.
std::string TextOf(const diagnostics::Diagnostic& diagnostic) {
  std::string text = support::SafeText(WholeText(diagnostic));
  const auto add = [&](const std::string& line) { text += '\n' + support::SafeText(line); };
  if (diagnostic.suggestion) add(SuggestionText(diagnostic));
  for (const diagnostics::Note& note : diagnostic.notes) {
    if (note.at.path.empty()) add(note.text);
  }
  return text;
}

std::vector<Related> RelatedOf(const diagnostics::Diagnostic& diagnostic, Files& files) {
  std::vector<Related> related;
  for (const auto* notes : {&diagnostic.notes, &diagnostic.included_from}) {
    for (const diagnostics::Note& note : *notes) {
      if (note.at.path.empty()) continue;
      related.push_back({support::SafeText(note.text), files.PlaceOf(note.at)});
    }
  }
  return related;
}

std::optional<Fix> FixOf(const diagnostics::Diagnostic& diagnostic, Files& files) {
  const std::optional<diagnostics::Fix> fix = diagnostics::FixOf(diagnostic);
  if (!fix) return std::nullopt;
  const Place at = files.PlaceOf(*diagnostic.at.file, fix->range);
  return Fix{at.range, fix->text, diagnostics::FixText(*fix, at.text), fix->is_safe};
}

Finding FindingOf(const diagnostics::Diagnostic& diagnostic, const std::string& main,
                  Files& files) {
  Finding finding;
  finding.id = diagnostic.row->id;
  finding.severity = static_cast<std::uint8_t>(diagnostic.severity);
  finding.text = TextOf(diagnostic);
  // What is about the run is about its script.
  const bool has_place = !diagnostic.at.path.empty();
  finding.at = has_place ? files.PlaceOf(diagnostic.at) : Place{files.NumberOf(main), {}, {}, {}};
  finding.related = RelatedOf(diagnostic, files);
  finding.fix = FixOf(diagnostic, files);
  finding.key = driver::KeyOf(diagnostic);
  finding.is_about_unused = driver::IsAboutUnused(*diagnostic.row);
  return finding;
}

// The findings beyond the limit.
Finding FindingOfRest(std::size_t count, const std::string& main, Files& files) {
  Finding finding;
  finding.severity = static_cast<std::uint8_t>(diagnostics::Severity::kNote);
  finding.text = diagnostics::NotShown(count);
  finding.at.file = files.NumberOf(main);
  finding.key = finding.text;
  return finding;
}

std::vector<Include> IncludesOf(const sources::SourceSet& sources, Files& files) {
  std::vector<Include> includes;
  for (const sources::Opening& opening : sources.openings()) {
    const sources::OriginSpot from = sources.IncluderOf(opening);
    if (from.item == nullptr) continue;
    const sources::SourceFile& includer = *from.opening->file;
    includes.push_back(
        {files.PlaceOf(includer, includer.RangeOf(ruxcomp::reader::FirstPart(*from.item))),
         files.NumberOf(opening.file->path())});
  }
  return includes;
}

MachineFindings FindingsOf(const driver::Checked& checked, const Surroundings& surroundings) {
  const driver::PartFindings& found = checked.found;
  Files files(found.sources, checked.files.paths, surroundings.documents, surroundings.encoding);
  MachineFindings machine;
  machine.main = found.main;
  for (const diagnostics::Diagnostic& diagnostic : found.report.diagnostics) {
    machine.findings.push_back(FindingOf(diagnostic, found.main, files));
  }
  if (found.report.not_shown > 0) {
    machine.findings.push_back(FindingOfRest(found.report.not_shown, found.main, files));
  }
  machine.includes = IncludesOf(found.sources, files);
  machine.shape = sources::ShapeOf(found.sources);
  machine.has_all = found.report.not_shown == 0;
  machine.failure = checked.failure.value_or("");
  machine.files = files.Take();
  return machine;
}

void RefuseForeignReader(const workspace::Documents& documents) {
  if (documents.all().empty() || !run::IsForeignReaderInstalled()) return;
  throw support::Failure(support::ExitStatus::kTrouble,
                         "cannot check open documents: the reader plug-in {} reads only files",
                         run::kPluginPath);
}

}  // namespace

std::vector<Machine> MachinesOf(const Surroundings& surroundings,
                                const workspace::Document& document) {
  Enter(surroundings);
  const std::string script = workspace::PathFrom(surroundings.root, document.path());
  std::vector<Machine> machines;
  try {
    if (document.is_file()) {
      const auto runs = driver::WithMainScripts({OptionsFor(surroundings, script)});
      for (const driver::CompileOptions& machine : runs.front().machines) {
        const std::string& main = machine.scripts.front();
        machines.push_back({main, support::WholeName(main)});
      }
    }
  } catch (const support::Failure&) {  // the check reports it
  }
  if (machines.empty()) machines.push_back({script, document.whole_name()});
  return machines;
}

std::vector<Machine> MachinesBelow(const Surroundings& surroundings,
                                   const std::string& file_or_folder) {
  Enter(surroundings);
  const auto is_wanted = [&](const std::string& path) {
    return support::IsBelow(support::WholeName(path), file_or_folder);
  };
  std::vector<Machine> machines;
  for (const std::string& script : sources::FindMainScriptsBelow(".", is_wanted)) {
    machines.push_back({script, support::WholeName(script)});
  }
  return machines;
}

MachineFindings CheckMachine(const Surroundings& surroundings, const std::string& script) {
  MachineFindings machine;
  machine.main = script;
  try {
    Enter(surroundings);
    RefuseForeignReader(surroundings.documents);
    machine = FindingsOf(driver::Check(OptionsFor(surroundings, script)), surroundings);
  } catch (const support::Failure& failure) {
    machine.failure = failure.what();
  } catch (const std::bad_alloc&) {
    machine.failure = "not enough memory to check the machine";
  }
  return machine;
}

}  // namespace rux::analysis
