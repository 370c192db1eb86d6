// From the findings of a run to diagnostics, with suggestions, second places and notes.
#ifndef ADVICE_ADVICE_H_
#define ADVICE_ADVICE_H_

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "advice/allowances.h"
#include "advice/consequences.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "rules/rule_report.h"
#include "run/log.h"
#include "run/run.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::advice {

inline constexpr ruxcomp::findings::MessageRow kUnreadIncludes = {
    "",
    "unread-includes",
    ruxcomp::findings::Level::kNote,
    "errors may follow from files that could not be included",
    "Some INCLUDEs could not be read, and -W no-error=missing-include makes that a warning: what "
    "those files define is missing. Correct the INCLUDEs first.",
    R"([INCLUDE]
FILE = machin.rux
[GLOBAL]
G_DUTY = VT_CONST, 40
)",
    R"([INCLUDE]
FILE = machine.rux
[GLOBAL]
G_DUTY = VT_CONST, 40
)"};
inline constexpr ruxcomp::findings::MessageRow kCheckedAsPart = {
    "",
    "checked-as-part",
    ruxcomp::findings::Level::kNote,
    "a file is checked as part of the machine that includes it",
    "The file has no MORVRUX section, so rux check checks the main scripts that include it: those "
    "that the project file names, or else those in the nearest folder that has one, from the "
    "file's own folder upwards, or else those anywhere in the repository. Only what concerns the "
    "file is reported, and what several machines have in common is reported once. A main script "
    "that is given together with its parts only has a note on the errors in them. With --as-main, "
    "the file is checked by itself.",
    "",
    ""};
inline constexpr const ruxcomp::findings::MessageRow* kRows[] = {&kUnreadIncludes, &kCheckedAsPart,
                                                                 &kUnusedAllow};

// Which files of a script are reported on: all, one, or all but some.
class Scope {
 public:
  Scope() = default;  // all
  // The file at the path, as it can be opened.
  Scope(const sources::SourceSet& sources, const std::string& path);
  // All but those at the paths.
  Scope(const sources::SourceSet& sources, const std::vector<std::string>& left_out);

  // `severity`: that of the finding.
  bool Includes(const run::Result& result, const run::Finding& finding,
                diagnostics::Severity severity);
  bool Includes(const diagnostics::Diagnostic& warning);

  // Lets places in the part have the path that it was given by, not that of the INCLUDE.
  void UsePath(const std::string& part, std::vector<diagnostics::Diagnostic>& diagnostics) const;

  // How many errors of the library are in other files.
  std::size_t errors_elsewhere() const { return errors_elsewhere_; }

 private:
  bool Includes(const support::TextFile* file) const;

  bool is_limited_ = false;
  const support::TextFile* file_ = nullptr;
  std::set<const support::TextFile*> left_out_;
  std::size_t errors_elsewhere_ = 0;
};

// Adds an error for each file that is not a script. Answers whether there was one: what else was
// found follows from it.
bool AddFilesThatAreNoScripts(const run::Result& result, const std::string& script,
                              diagnostics::Collection& collection);

// Adds what the rules have found, with the INCLUDEs that lead there and a place for what is about
// the script as a whole. `script`: its path, as it can be opened.
void AddWarnings(const run::Result& result, const std::string& script, rules::Warnings warnings,
                 Scope& scope, diagnostics::Collection& collection);

// Adds to what a run and the rules have found: what was probably meant by a name that does not
// exist, the other place that a message is about, and what its text leaves open.
void Advise(const run::Result& result, std::vector<diagnostics::Diagnostic>& diagnostics);

// Adds why files could not be included and, when that is a warning beside errors, a note at the end
// that counts these files.
void AddNotesOnIncludes(const run::Result& result, diagnostics::Collection& collection);

// Adds what was found up to the check, in order and with places. `script`: its path, as it can be
// opened.
void AddDiagnosticsOf(const run::Result& result, const std::string& script,
                      const Consequences& consequences, Scope& scope,
                      diagnostics::Collection& collection);

// The error that the library raised instead of reporting it.
diagnostics::Diagnostic DiagnosticOfRaised(const run::Result& result, const std::string& script);

}  // namespace rux::advice

#endif  // ADVICE_ADVICE_H_
