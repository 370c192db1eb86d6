// What is found in a machine, and what differs from another one.
#include <algorithm>
#include <cstddef>
#include <map>
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

using Finding = diagnostics::Diagnostic;

// Those with one rule follow each other, rules in the order in which they first appear.
std::vector<const Finding*> ByRules(const std::vector<Finding>& findings) {
  std::map<const void*, std::size_t> places;
  for (const Finding& finding : findings) places.emplace(finding.row, places.size());
  std::vector<const Finding*> sorted;
  sorted.reserve(findings.size());
  for (const Finding& finding : findings) sorted.push_back(&finding);
  std::stable_sort(sorted.begin(), sorted.end(), [&](const Finding* a, const Finding* b) {
    return places.at(a->row) < places.at(b->row);
  });
  return sorted;
}

class FindingList {
 public:
  explicit FindingList(const Contents& contents)
      : contents_(contents), findings_(ByRules(contents.background().report->diagnostics)) {}

  void Write(Html& out) const {
    std::size_t end = 0;
    for (std::size_t begin = 0; begin < findings_.size(); begin = end) {
      while (end < findings_.size() && findings_[end]->row == findings_[begin]->row) ++end;
      if (end - begin == 1) {
        WriteOne(*findings_[begin], out);
      } else {
        WriteGroup(begin, end, out);
      }
    }
  }

 private:
  // Of a rule with more, those who want them open the list.
  static constexpr std::size_t kMostOpen = 12;

  void WriteOne(const Finding& finding, Html& out) const {
    out << "<li>";
    WriteLinkOf(finding, out);
    WriteFinding(contents_, finding, out);
  }

  void WriteGroup(std::size_t begin, std::size_t end, Html& out) const {
    const bool is_open = end - begin <= kMostOpen;
    out << "<li class=rule>" << (is_open ? Html() << "<details open>" : Html() << "<details>")
        << "<summary>";
    WriteRule(*findings_[begin], out);
    out << " <b>" << end - begin << "</b></summary>\n";
    if (!is_open) out << "<noscript>";
    out << "<ul>";
    for (std::size_t i = begin; i < end; ++i) {
      out << "<li>";
      if (WriteLinkOf(*findings_[i], out)) {
        WriteShortFinding(contents_, *findings_[i], out);
      } else {
        WriteFinding(contents_, *findings_[i], out);
      }
    }
    out << "</ul>";
    if (!is_open) out << "</noscript>";
    out << "</details>\n";
  }

  // Whether there is a section to lead to.
  bool WriteLinkOf(const Finding& finding, Html& out) const {
    const std::optional<Thing> thing = contents_.ThingOf(finding);
    if (!thing) return false;
    WriteFullLink(contents_, *thing, out);
    out << ": ";
    return true;
  }

  const Contents& contents_;
  const std::vector<const Finding*> findings_;
};

}  // namespace

void WriteFindings(const Contents& contents, Html& out) {
  const std::optional<diagnostics::Report>& report = contents.background().report;
  if (!report || report->diagnostics.empty()) return;
  out << "<section id=findings><h2>Findings</h2><ul class=notes>\n";
  FindingList(contents).Write(out);
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
