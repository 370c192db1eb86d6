#include "advice/advice.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

#include "advice/fixes.h"
#include "advice/line_hints.h"
#include "advice/message_advice.h"
#include "advice/places.h"
#include "advice/script_notes.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "reader/archive.h"
#include "reader/include_folders.h"
#include "rules/rule_report.h"
#include "run/log.h"
#include "run/run.h"
#include "ruxcomp/language/spelling.h"
#include "sources/content.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/nearest.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
using diagnostics::Diagnostic;
using sources::OriginSpot;

// The first part of a run's diagnostics gets advice; who has more of them starts there anyway.
// Looking for names takes time for each.
constexpr std::size_t kMostAdvised = 100;
// So many names are looked at for that; a script may have a million.
constexpr std::size_t kMostCompared = 3'000'000;

// What the diagnostic says does not exist; null when it is not said.
const std::string* Wanted(const Diagnostic& diagnostic) {
  const std::string* mentioned = FirstMentioned(diagnostic);
  if (mentioned != nullptr) return mentioned;
  return diagnostic.entry ? &*diagnostic.entry : nullptr;
}

// Returns how many names were looked at.
std::size_t AddSuggestion(const sources::SourceSet& sources, const MessageAdvice& advice,
                          Diagnostic& diagnostic) {
  const std::string* wanted = Wanted(diagnostic);
  // A text that is longer than any sensible name would take its time.
  constexpr std::size_t kLongest = 100;
  if (advice.names == nullptr || wanted == nullptr || wanted->size() > kLongest) return 0;
  Names names = advice.names(sources, diagnostic);
  const auto has = [&](const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  // It is there, though not where it is looked for.
  if (has(*wanted)) return names.size();
  for (const std::string_view prefix : {language::kGlobalPrefix, language::kValuePrefix}) {
    std::string whole = std::string(prefix) + *wanted;
    if (has(whole)) diagnostic.suggestion = std::move(whole);
  }
  if (diagnostic.suggestion) return names.size();
  // A jump may name anything.
  const bool has_prefix = wanted->compare(0, advice.prefix.size(), advice.prefix) == 0;
  const std::size_t skipped = has_prefix ? advice.prefix.size() : 0;
  for (std::string& name : names) name.erase(0, skipped);
  diagnostic.suggestion = support::ClosestName(wanted->substr(skipped), names);
  if (diagnostic.suggestion) diagnostic.suggestion->insert(0, advice.prefix.substr(0, skipped));
  return names.size();
}

// Climbs the INCLUDEs of two openings of a file as long as they are the same.
void ClimbToDifference(const sources::SourceSet& sources, OriginSpot& first, OriginSpot& again) {
  while (first.item != nullptr && again.item != nullptr && first.item == again.item &&
         first.opening != again.opening) {
    first = sources.IncluderOf(*first.opening);
    again = sources.IncluderOf(*again.opening);
  }
}

void AddOtherPlace(const sources::SourceSet& sources, const MessageAdvice& advice,
                   Diagnostic& diagnostic) {
  if (advice.other == nullptr || diagnostic.other == ruxcomp::findings::Origin()) return;
  Diagnostic other;
  Places places(sources, "");
  if (!places.Locate(diagnostic.other, advice.underline, other)) return;
  OriginSpot first = sources.At(diagnostic.other);
  OriginSpot again = sources.At(diagnostic.origin);
  const bool is_included_again = first.opening != again.opening &&
                                 other.at.file == diagnostic.at.file &&
                                 other.at.range.begin == diagnostic.at.range.begin;
  if (!is_included_again) {
    diagnostic.notes.push_back({advice.other, other.at});
    return;
  }
  first = sources.IncluderOf(*first.opening);
  again = sources.IncluderOf(*again.opening);
  ClimbToDifference(sources, first, again);
  if (first.item == nullptr) return;
  const sources::SourceFile& file = *first.opening->file;
  diagnostic.notes.push_back({"the file is first included here",
                              diagnostics::LocationIn(file, file.RangeOf(first.item->value))});
}

void AddHint(const sources::SourceSet& sources, const MessageAdvice& advice,
             Diagnostic& diagnostic) {
  // What the line shows explains more than the rules for keys do.
  if (AddLineHint(sources, diagnostic)) return;
  if (diagnostic.row == &ruxcomp::findings::rows::kInvalidEntryName && !diagnostic.suggestion) {
    const std::string rule = KeyRuleOf(*diagnostic.section);
    if (!rule.empty()) diagnostic.notes.push_back({rule, {}});
  }
  if (advice.needs_hint != nullptr && advice.needs_hint(diagnostic)) {
    diagnostic.notes.push_back({advice.hint, {}});
  }
}

// The scripts that were refused, by the item that includes them.
class RefusedByItem {
 public:
  explicit RefusedByItem(const sources::SourceSet& sources) {
    for (const ruxcomp::reader::RefusedScript& refused : sources.refused()) {
      const ruxcomp::reader::Includer& by = refused.includer;
      if (by) items_.emplace(Key{by->script, by->place.section, by->place.item}, &refused);
    }
  }

  const ruxcomp::reader::RefusedScript* Find(const Diagnostic& warning) const {
    const ruxcomp::findings::Origin& at = warning.origin;
    const auto found = items_.find(Key{at.script, at.section, at.item});
    return found == items_.end() ? nullptr : found->second;
  }

 private:
  using Key = std::tuple<std::size_t, std::size_t, std::size_t>;  // opening, section, item
  std::map<Key, const ruxcomp::reader::RefusedScript*> items_;
};

std::string RefusalText(const ruxcomp::reader::RefusedScript& refused) {
  const std::string path = sources::ToShownPath(refused.path);
  if (refused.reason == ruxcomp::reader::Refusal::kIsOpenAlready) {
    return path + " is already open: the INCLUDEs form a loop";
  }
  return "cannot read " + path + ": " + sources::ReasonOf(refused);
}

// Where else it was looked for, in vain; empty when nowhere.
std::string FoldersText(const ruxcomp::reader::RefusedScript& refused) {
  std::string text;
  if (refused.reason != ruxcomp::reader::Refusal::kNotFound) return text;
  for (const std::string& folder : ruxcomp::reader::IncludeFolders::Current()) {
    text += (text.empty() ? "also looked in " : ", ") + folder;
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored)) text += " (no such folder)";
  }
  return text;
}

}  // namespace

bool AddFilesThatAreNoScripts(const run::Result& result, const std::string& script,
                              diagnostics::Collection& collection) {
  const Places places(result.sources, script);
  std::set<const sources::SourceFile*> seen;
  bool are_some = false;
  for (const sources::Opening& opening : result.sources.openings()) {
    if (!seen.insert(opening.file).second) continue;
    const std::string_view why = sources::WhyNotAScript(opening.file->text());
    if (why.empty()) continue;
    are_some = true;
    collection.Add(run::kNotAScript, run::kNotAScript.severity, [&] {
      Diagnostic diagnostic;
      diagnostic.row = &run::kNotAScript;
      diagnostic.text = why;
      diagnostic.at.path = opening.file->path();
      diagnostic.included_from = places.IncludesOf(opening);
      return diagnostic;
    });
  }
  return are_some;
}

void AddWarnings(const run::Result& result, const std::string& script, rules::Warnings warnings,
                 Scope& scope, diagnostics::Collection& collection) {
  const Places places(result.sources, script);
  for (Diagnostic& warning : warnings.kept) {
    if (!scope.Includes(warning)) continue;
    collection.Add(*warning.row, warning.row->severity, [&] {
      if (warning.at.path.empty()) warning.at.path = script;
      places.AddIncludes(warning);
      return std::move(warning);
    });
  }
  warnings.tally.ForEachRest([&](const ruxcomp::findings::MessageRow& row, std::size_t count) {
    collection.AddRest(row, row.severity, count);
  });
}

void Advise(const run::Result& result, std::vector<Diagnostic>& diagnostics) {
  std::size_t advised = 0;
  std::size_t compared = 0;
  TypeNotes types(result.sources);
  for (Diagnostic& diagnostic : diagnostics) {
    if (diagnostic.severity == diagnostics::Severity::kNote) continue;
    if (advised++ == kMostAdvised) break;
    const MessageAdvice& advice = AdviceFor(diagnostic.row);
    if (compared < kMostCompared && !diagnostic.suggestion)
      compared += AddSuggestion(result.sources, advice, diagnostic);
    if (!diagnostic.fix) AddFix(result.sources, diagnostic);
    AddOtherPlace(result.sources, advice, diagnostic);
    AddHint(result.sources, advice, diagnostic);
    if (diagnostic.row == &ruxcomp::findings::rows::kUnlistedSensor) {
      AddListToExtend(result.sources, diagnostic);
    }
    if (diagnostic.row == &RowOf(rules::RuleId::kMissingSection)) {
      AddSwallowedSection(result.sources, diagnostic);
    }
    if (diagnostic.row == &ruxcomp::findings::rows::kTooFewOperands) types.AddNote(diagnostic);
  }
}

void AddNotesOnIncludes(const run::Result& result, diagnostics::Collection& collection) {
  const ruxcomp::findings::MessageRow& row = ruxcomp::findings::rows::kMissingInclude;
  const RefusedByItem refused_by_item(result.sources);
  for (Diagnostic& diagnostic : collection.kept()) {
    if (diagnostic.row != &row) continue;
    const ruxcomp::reader::RefusedScript* refused = refused_by_item.Find(diagnostic);
    if (refused == nullptr) continue;
    const auto at = diagnostic.notes.insert(diagnostic.notes.begin(), {RefusalText(*refused), {}});
    std::string folders = FoldersText(*refused);
    if (!folders.empty()) diagnostic.notes.insert(std::next(at), {std::move(folders), {}});
  }
  // What follows from an error is part of it.
  const std::size_t missing = collection.CountOf(row);
  const bool are_errors = collection.SeverityOf(row) == diagnostics::Severity::kError;
  if (missing == 0 || are_errors || collection.errors() == 0) return;
  Diagnostic note;
  note.row = &kUnreadIncludes;
  note.severity = diagnostics::Severity::kNote;
  note.text = missing == 1 ? "1 INCLUDE could not be read; errors above may follow from it"
                           : std::to_string(missing) +
                                 " INCLUDEs could not be read; errors above may follow from them";
  collection.AddConclusion(std::move(note));
}

}  // namespace rux::advice
