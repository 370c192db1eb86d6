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

  void Write(std::size_t begin, std::size_t end, Html& out) const {
    for (std::size_t i = begin; i < end; ++i) {
      const bool is_first = i == begin || !IsSame(i - 1, i);
      const bool is_one_of_several = !is_first || IsSame(i, i + 1);
      if (is_first && is_one_of_several) {
        out << "<li class=about>";
        WriteRule(*findings_[i], out);
      }
      out << "<li>";
      WriteOne(*findings_[i], is_one_of_several, out);
    }
  }

  std::size_t size() const { return findings_.size(); }

 private:
  bool IsSame(std::size_t i, std::size_t k) const {
    return k < findings_.size() && findings_[i]->row == findings_[k]->row;
  }

  void WriteOne(const Finding& finding, bool has_rule_above, Html& out) const {
    const std::optional<Thing> thing = contents_.ThingOf(finding);
    if (thing) {
      WriteFullLink(contents_, *thing, out);
      out << ": ";
    }
    if (has_rule_above && thing) return WriteShortFinding(contents_, finding, out);
    WriteFinding(contents_, finding, out);
  }

  const Contents& contents_;
  const std::vector<const Finding*> findings_;
};

}  // namespace

void WriteFindings(const Contents& contents, Html& out) {
  const std::optional<diagnostics::Report>& report = contents.background().report;
  if (!report || report->diagnostics.empty()) return;
  // As many as a browser lays out at once.
  constexpr std::size_t kMostAtOnce = 100;
  const FindingList list(contents);
  out << "<section id=findings><h2>Findings</h2><ul class=notes>\n";
  list.Write(0, std::min(list.size(), kMostAtOnce), out);
  out << "</ul>";
  if (list.size() > kMostAtOnce) {
    out << "<details><summary>" << list.size() - kMostAtOnce
        << " more</summary><noscript><ul class=notes>";
    list.Write(kMostAtOnce, list.size(), out);
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
