// The forms of a report that forges show beside the lines of scripts.
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>

#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/report.h"
#include "diff/change.h"
#include "diff/report.h"
#include "findings/message_row.h"
#include "machine/git.h"
#include "machine/place.h"
#include "support/text_stream.h"

namespace rux::diff {
namespace {

class Annotations {
 public:
  explicit Annotations(const Report& report) : report_(report) {
    if (!report.before.file.revision.empty() || !report.after.file.revision.empty())
      folder_ = machine::FolderInRepository();
  }

  diagnostics::Report All() const {
    diagnostics::Report all;
    all.script = PathOf(report_.after.file);
    for (const Change& change : report_.changes) {
      all.diagnostics.push_back(DiagnosticOf(change));
      if (report_.Fails(change)) ++all.errors;
      auto& counts = all.by_message;
      const auto known = std::find_if(counts.begin(), counts.end(), [&](const auto& count) {
        return count.row == change.row->message;
      });
      if (known == counts.end()) {
        counts.push_back({change.row->message, 1, 1});
      } else {
        ++known->all;
        ++known->kept;
      }
    }
    return all;
  }

 private:
  std::string PathOf(const machine::Place& place) const {
    return folder_ ? machine::PathInRepository(*folder_, place.path) : place.path;
  }

  diagnostics::Location LocationOf(const Side& side, const ComparedMachine& machine) const {
    const machine::Place& place = side.place ? *side.place : machine.file;
    return {PathOf(place), place.line};
  }

  // In the new machine, where that has it; the other one is a note.
  diagnostics::Diagnostic DiagnosticOf(const Change& change) const {
    using ruxcomp::findings::Severity;
    const bool is_gone = change.before.place && !change.after.place;
    diagnostics::Diagnostic diagnostic;
    diagnostic.row = change.row->message;
    diagnostic.severity = report_.Fails(change) ? Severity::kError : Severity::kNote;
    const std::string what = change.WhatText();
    diagnostic.text = fmt::format("{}: {}{}{}", change.SectionText(), change.row->message->summary,
                                  what.empty() ? "" : ": ", what);
    diagnostic.at = is_gone ? LocationOf(change.before, report_.before)
                            : LocationOf(change.after, report_.after);
    if (!is_gone && change.before.place) {
      const std::string& revision = change.before.place->revision;
      diagnostic.notes.push_back({revision.empty() ? "before" : "before, in " + revision,
                                  LocationOf(change.before, report_.before)});
    }
    return diagnostic;
  }

  const Report& report_;
  std::optional<std::string> folder_;  // of the repository that the working folder is, if it counts
};

}  // namespace

void WriteGithub(const Report& report, support::TextStream& out) {
  diagnostics::WriteGithubText(Annotations(report).All(), out);
}

void WriteSarif(const Report& report, support::TextStream& out) {
  diagnostics::WriteSarifReport(Annotations(report).All(), out);
}

}  // namespace rux::diff
