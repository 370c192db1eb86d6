#include "page/marks.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diff/change.h"
#include "diff/classes.h"
#include "findings/message_row.h"
#include "page/contents.h"
#include "page/html.h"
#include "support/number_text.h"

namespace rux::page {
namespace {

bool IsAdded(const diff::Change& change) {
  return change.row->id == diff::ClassId::kSectionAdded ||
         change.row->id == diff::ClassId::kNamedSectionAdded;
}

void WriteValue(const std::optional<std::string>& text, Html& out) {
  if (text) {
    out << Text{*text};
  } else {
    out << "(none)";
  }
}

void WriteSeverity(const diagnostics::Diagnostic& finding, Html& out) {
  const bool is_error = finding.severity == ruxcomp::findings::Severity::kError;
  out << "<em class=w>" << Text{is_error ? "error" : "warning"} << "</em>";
}

void WritePlace(const Contents& contents, const diagnostics::Diagnostic& finding, Html& out) {
  if (finding.at.path.empty()) return;
  out << " <span class=p>" << Text{contents.PlaceText({finding.at.path, finding.at.line()})}
      << "</span>";
}

}  // namespace

void WriteMarks(const Contents& contents, Thing thing, Html& out) {
  const auto& changes = contents.ChangesOf(thing);
  if (!changes.empty()) {
    if (IsAdded(*changes.front())) {
      out << " <em class=c>new</em>";
    } else {
      out << " <em class=c>changed</em>";
    }
  }
  const auto& findings = contents.FindingsOf(thing);
  if (!findings.empty())
    out << " <em class=w>" << Text{support::CountText(findings.size(), "finding")} << "</em>";
}

void WriteRule(const diagnostics::Diagnostic& finding, Html& out) {
  WriteSeverity(finding, out);
  out << " " << Text{finding.row->summary} << " <small>" << Text{finding.row->id} << "</small>";
}

void WriteShortFinding(const Contents& contents, const diagnostics::Diagnostic& finding,
                       Html& out) {
  if (finding.entry) out << Text{*finding.entry} << ": ";
  out << Text{finding.text};
  WritePlace(contents, finding, out);
  out << "\n";
}

void WriteFinding(const Contents& contents, const diagnostics::Diagnostic& finding, Html& out) {
  WriteSeverity(finding, out);
  out << " " << Text{diagnostics::WholeText(finding)} << " <small>" << Text{finding.row->id}
      << "</small>";
  if (finding.suggestion) out << "; " << Text{diagnostics::SuggestionText(finding)};
  WritePlace(contents, finding, out);
  const bool has_item = finding.at.excerpt && finding.entry;
  if (has_item) out << "<code>" << Line{finding.at.excerpt->text} << "</code>";
  out << "\n";
}

void WriteChange(const diff::Change& change, Html& out) {
  const std::string entry = change.EntryText();
  out << "<em class=c>" << Text{change.row->message->id} << "</em> ";
  if (!entry.empty()) out << Text{entry} << ": ";
  if (change.before.text || change.after.text) {
    out << "<del>";
    WriteValue(change.before.text, out);
    out << "</del> \u2192 <ins>";
    WriteValue(change.after.text, out);
    out << "</ins>";
  } else {
    out << Text{change.row->message->summary};
  }
  out << "\n";
}

void WriteFindingsOf(const Contents& contents, Thing thing, Html& out) {
  const auto& findings = contents.FindingsOf(thing);
  if (findings.empty()) return;
  out << "<ul class=notes>";
  for (const diagnostics::Diagnostic* finding : findings) {
    out << "<li>";
    WriteFinding(contents, *finding, out);
  }
  out << "</ul>";
}

void WriteChangesOf(const Contents& contents, Thing thing, Html& out) {
  const auto& changes = contents.ChangesOf(thing);
  if (changes.empty()) return;
  out << "<ul class=notes>";
  for (const diff::Change* change : changes) {
    out << "<li>";
    WriteChange(*change, out);
  }
  out << "</ul>";
}

}  // namespace rux::page
