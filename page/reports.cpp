// What is found in a machine, and what differs from another one.
#include <cstddef>
#include <optional>
#include <string>

#include "diagnostics/report.h"
#include "diff/change.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/marks.h"
#include "page/parts.h"
#include "support/number_text.h"

namespace rux::page {

void WriteFindings(const Contents& contents, Html& out) {
  const std::optional<diagnostics::Report>& report = contents.background().report;
  if (!report || report->diagnostics.empty()) return;
  out << "<section id=findings><h2>Findings</h2><ul class=notes>\n";
  for (const diagnostics::Diagnostic& finding : report->diagnostics) {
    out << "<li>";
    if (const std::optional<Thing> thing = contents.ThingOf(finding)) {
      WriteFullLink(contents, *thing, out);
      out << ": ";
    }
    WriteFinding(contents, finding, out);
  }
  out << "</ul>";
  if (report->not_shown > 0) out << "<p>" << Text{diagnostics::NotShown(report->not_shown)};
  out << "</section>\n";
}

void WriteChanges(const Contents& contents, Html& out) {
  const std::optional<std::vector<diff::Change>>& changes = contents.background().changes;
  if (!changes || changes->empty()) return;
  out << "<section id=changes><h2>Changes since " << Text{contents.background().before}
      << "</h2><ul class=notes>\n";
  std::string section;
  for (const diff::Change& change : *changes) {
    const std::string about = change.SectionText();
    if (about != section) {
      section = about;
      out << "<li class=about>";
      const std::optional<Thing> thing = contents.ThingOf(change);
      if (thing) {
        WriteFullLink(contents, *thing, out);
      } else {
        out << Text{about};
      }
      out << "\n";
    }
    out << "<li>";
    WriteChange(change, out);
  }
  out << "</ul></section>\n";
}

}  // namespace rux::page
