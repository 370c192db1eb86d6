// What is found in a machine, and what differs from another one.
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "diff/change.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/marks.h"
#include "page/parts.h"

namespace rux::page {
namespace {

void WriteRange(const Contents& contents, std::size_t begin, std::size_t end, Html& out) {
  for (std::size_t i = begin; i < end; ++i) {
    const diagnostics::Diagnostic& finding = contents.background().report->diagnostics[i];
    out << "<li>";
    if (const std::optional<Thing> thing = contents.ThingOf(finding)) {
      WriteFullLink(contents, *thing, out);
      out << ": ";
    }
    WriteFinding(contents, finding, out);
  }
}

}  // namespace

void WriteFindings(const Contents& contents, Html& out) {
  const std::optional<diagnostics::Report>& report = contents.background().report;
  if (!report || report->diagnostics.empty()) return;
  // As many as a browser lays out at once.
  constexpr std::size_t kMostAtOnce = 100;
  const std::size_t count = report->diagnostics.size();
  out << "<section id=findings><h2>Findings</h2><ul class=notes>\n";
  WriteRange(contents, 0, std::min(count, kMostAtOnce), out);
  out << "</ul>";
  if (count > kMostAtOnce) {
    out << "<details><summary>" << count - kMostAtOnce
        << " more</summary><noscript><ul class=notes>";
    WriteRange(contents, kMostAtOnce, count, out);
    out << "</ul></noscript></details>";
  }
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
