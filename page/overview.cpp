// The first screen of a page.
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "inspect/entry_value.h"
#include "machine/value.h"
#include "page/actions.h"
#include "page/contents.h"
#include "page/effects.h"
#include "page/html.h"
#include "page/parts.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "support/number_text.h"

namespace rux::page {
namespace {

std::string TimeText(std::uint32_t seconds) {
  const std::time_t time = seconds;
  std::tm parts{};
  gmtime_r(&time, &parts);
  char text[sizeof "2026-01-01 12:00:00 UTC"];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &parts);
  return text;
}

void WriteCount(const Contents& contents, const language::SectionKind& kind, Html& out) {
  const Contents::Range range = contents.Of(kind.source);
  if (kind.naming == language::Naming::kUnnamed || range.size() == 0) return;
  out << "<li><a href=#k-" << Text{kind.keyword} << "><b>" << range.size() << "</b> "
      << Text{kind.keyword} << "</a>";
}

// Of sensors first: how large the machine is.
void WriteCounts(const Contents& contents, Html& out) {
  out << "<ul class=counts>";
  WriteCount(contents, language::KindOf(language::SECTION_SENSOR), out);
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (kind.source != language::SECTION_SENSOR) WriteCount(contents, kind, out);
  }
  out << "</ul>";
}

void WriteFact(const char* name, const std::string& text, Html& out) {
  out << "<div><dt>" << Text{name} << "<dd>" << Text{text} << "</div>";
}

// What the sections without names say of the machine as a whole.
void WriteFacts(const Contents& contents, Html& out) {
  const Background& background = contents.background();
  out << "<dl class=facts>";
  WriteFact("file", background.file, out);
  WriteFact("form", background.form, out);
  if (background.creation_time) WriteFact("compiled", TimeText(*background.creation_time), out);
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (kind.naming != language::Naming::kUnnamed) continue;
    const Contents::Range range = contents.Of(kind.source);
    for (Thing thing = range.begin; thing < range.end; ++thing) {
      for (const ruxcomp::Entry& entry : contents.EntriesOf(thing)) {
        const std::string key = machine::KeyOf(contents.SectionOf(thing), entry);
        WriteFact(key.c_str(), inspect::ValueText(machine::ValueOf(entry)), out);
      }
    }
  }
  out << "</dl>";
}

void WriteVerdict(const Contents& contents, Html& out) {
  const Background& background = contents.background();
  out << "<p class=verdict>";
  if (background.report) {
    const std::size_t count = background.report->errors + background.report->warnings;
    if (count == 0) {
      out << "check and lint find nothing.";
    } else {
      out << "<a href=#findings>" << Text{support::CountText(count, "finding")}
          << "</a> (check and lint).";
    }
  }
  if (background.changes) {
    out << " <a href=#changes>" << Text{support::CountText(background.changes->size(), "change")}
        << "</a> since " << Text{background.before} << ".";
  }
  if (background.is_new) out << " The machine is new.";
  out << "</p>";
}

}  // namespace

void WriteOverview(const Contents& contents, const Effects& effects, Html& out) {
  out << "<section id=overview><h2>Overview</h2>";
  WriteVerdict(contents, out);
  WriteCounts(contents, out);
  WriteFacts(contents, out);
  WriteActions(contents, effects, out);
  out << "</section>\n";
}

void WriteNavigation(const Contents& contents, Html& out) {
  const Background& background = contents.background();
  if (!background.index.empty())
    out << "<a href=\"" << Text{background.index} << "\">All machines</a>";
  out << "<a href=#overview>Overview</a>";
  if (background.tests) out << "<a href=#tests>Tests</a>";
  if (background.changes && !background.changes->empty()) out << "<a href=#changes>Changes</a>";
  if (background.report && !background.report->diagnostics.empty())
    out << "<a href=#findings>Findings</a>";
  if (contents.Of(language::SECTION_SENSOR).size() != 0) out << "<a href=#sensors>Sensors</a>";
  out << "<a href=#groups>Groups</a><a href=#accesses>Buses</a><a href=#details>Details</a>";
}

}  // namespace rux::page
