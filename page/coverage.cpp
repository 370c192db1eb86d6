#include "page/coverage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "browse/relations.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "evaluation/target.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/test_run.h"
#include "profile/profile.h"
#include "ruxcomp/model/handles.h"
#include "support/number_text.h"

namespace rux::page {
namespace {

// None without tests, and of a thing that has nothing to cover.
std::optional<Tallies> TalliesOf(const Contents& contents, Thing thing) {
  const std::optional<TestRun>& tests = contents.background().tests;
  if (!tests) return std::nullopt;
  const ruxcomp::Section section = contents.SectionOf(thing);
  const std::size_t number = std::get<2>(contents.relations().PositionOf(thing));
  evaluation::ValueKey first(section.kind(), section.ordinal(), 0);
  evaluation::ValueKey last(section.kind(), section.ordinal(),
                            std::numeric_limits<std::uint32_t>::max());
  if (number != browse::MachineRelations::kWhole)
    first = last = evaluation::KeyOf(section, section.entries()[number]);
  const Tallies tallies = tests->Between(first, last);
  const bool has_any = std::any_of(tallies.begin(), tallies.end(), [](const Tally& each) {
    return each.all + each.left_out.size() > 0;
  });
  return has_any ? std::optional<Tallies>(tallies) : std::nullopt;
}

bool IsCovered(const Tallies& tallies) {
  return std::all_of(tallies.begin(), tallies.end(),
                     [](const Tally& each) { return each.missing.empty(); });
}

void WriteVerdictOf(const Tallies& tallies, Html& out) {
  if (IsCovered(tallies)) {
    out << "covered";
  } else {
    out << "not covered";
  }
}

constexpr char kNotCompared[] = " not compared under this profile";

void WriteTotals(const TestRun& tests, Html& out) {
  out << "<table><caption>Coverage</caption><thead><tr><th scope=col>kind<th scope=col "
         "class=n>%<th scope=col class=n>covered<th scope=col class=n>of<th scope=col>what "
         "counts<tbody>\n";
  for (const cases::CoveredKind& kind : tests.coverage()) {
    const std::optional<std::size_t> percent = kind.percent();
    out << "<tr><th scope=row>" << Text{kind.name} << "<td class=n>"
        << Text{percent ? std::to_string(*percent) : "-"} << "<td class=n>" << kind.covered()
        << "<td class=n>" << kind.all() << "<td>" << Text{kind.what};
    if (!kind.left_out.empty()) out << "; " << kind.left_out.size() << kNotCompared;
    out << "\n";
  }
  out << "</table>";
}

void WriteFailedCase(const Contents& contents, const cases::CaseResult& result, Html& out) {
  out << "<li class=about><em class=w>failed</em> " << Text{result.source->name} << "\n";
  for (const cases::Mismatch& mismatch : result.mismatches) {
    out << "<li>" << Text{mismatch.text} << " <span class=p>"
        << Text{contents.PlaceText({result.source->file, mismatch.line})} << "</span>";
    for (const cases::Remark& remark : mismatch.remarks) {
      out << "<br>" << Text{remark.text};
      if (remark.place)
        out << " <span class=p>" << Text{contents.PlaceText(*remark.place)} << "</span>";
    }
    out << "\n";
  }
}

void WriteFile(const Contents& contents, const TestedFile& tested, Html& out) {
  const std::size_t failed = cases::CountFailed(tested.results);
  out << "<p>" << Text{contents.PathText(tested.file.path)} << ": "
      << Text{support::CountText(tested.results.size(), "case")} << ", " << failed
      << " failed</p>\n";
  if (failed == 0) return;
  out << "<ul class=notes>";
  for (const cases::CaseResult& result : tested.results) {
    if (!result.passes()) WriteFailedCase(contents, result, out);
  }
  out << "</ul>";
}

// A list of what the tallies have, thing by thing, below its length.
void WriteThings(const Contents& contents, Tally::Things Tally::*things, const char* title,
                 Html& out) {
  constexpr std::size_t kMostOpen = 40;  // more are opened by those who want them
  Html list;
  std::size_t count = 0;
  for (Thing thing = 0; thing < contents.relations().things().size(); ++thing) {
    const std::optional<Tallies> tallies = TalliesOf(contents, thing);
    if (!tallies) continue;
    for (const Tally& tally : *tallies) {
      for (const cases::CoveredThing* each : tally.*things) {
        ++count;
        list << "<li><a href=#t" << thing << ">" << Text{each->path} << "</a>: " << Text{each->what}
             << "\n";
      }
    }
  }
  if (count == 0) return;
  const bool is_open = count <= kMostOpen;
  out << (is_open ? Html() << "<details open>" : Html() << "<details>") << "<summary>"
      << Text{title} << ": " << count << "</summary>\n";
  if (!is_open) out << "<noscript>";
  out << "<ul class=notes>" << list << "</ul>";
  if (!is_open) out << "</noscript>";
  out << "</details>";
}

}  // namespace

void WriteTests(const Contents& contents, Html& out) {
  const std::optional<TestRun>& tests = contents.background().tests;
  if (!tests) return;
  out << "<section id=tests><h2>Tests</h2><p>" << Text{profile::TitleOf(tests->profile())}
      << "</p>\n";
  for (const TestedFile& file : tests->files()) WriteFile(contents, file, out);
  WriteTotals(*tests, out);
  WriteThings(contents, &Tally::missing, "Not covered", out);
  WriteThings(contents, &Tally::left_out, "Not compared under this profile", out);
  out << "</section>\n";
}

void WriteCovered(const Contents& contents, Thing thing, Html& out) {
  if (const std::optional<Tallies> tallies = TalliesOf(contents, thing))
    WriteVerdictOf(*tallies, out);
}

void WriteTestMark(const Contents& contents, Thing thing, Html& out) {
  const std::optional<Tallies> tallies = TalliesOf(contents, thing);
  if (!tallies) return;
  out << (IsCovered(*tallies) ? Html() << " <em class=c>" : Html() << " <em class=w>")
      << "<a href=#tests>";
  WriteVerdictOf(*tallies, out);
  out << "</a></em>";
}

void WriteCoverageOf(const Contents& contents, Thing thing, Html& out) {
  const std::optional<Tallies> tallies = TalliesOf(contents, thing);
  if (!tallies) return;
  out << "<ul class=notes>";
  for (std::size_t kind = 0; kind < tallies->size(); ++kind) {
    const Tally& tally = (*tallies)[kind];
    for (const cases::CoveredThing* each : tally.left_out)
      out << "<li>" << Text{each->path} << ": " << Text{each->what} << "\n";
    if (tally.all == 0) continue;
    out << "<li>" << Text{cases::kCoveredKinds[kind]} << ": " << tally.all - tally.missing.size()
        << " of " << tally.all << " covered\n";
    for (const cases::CoveredThing* missing : tally.missing) {
      out << "<li><em class=w>not covered</em> " << Text{missing->path} << ": "
          << Text{missing->what} << "\n";
    }
  }
  out << "</ul>";
}

}  // namespace rux::page
