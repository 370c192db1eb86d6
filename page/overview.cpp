// The first screen of a page.
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "inspect/entry_value.h"
#include "machine/value.h"
#include "page/contents.h"
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

void WriteCounts(const Contents& contents, Html& out) {
  out << "<ul class=counts>";
  for (const language::SectionKind& kind : language::kSectionKinds) {
    const Contents::Range range = contents.Of(kind.source);
    if (kind.naming == language::Naming::kUnnamed || range.size() == 0) continue;
    out << "<li><a href=#k-" << Text{kind.keyword} << "><b>" << range.size() << "</b> "
        << Text{kind.keyword} << "</a>";
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

void WriteLinks(const Contents& contents, const std::vector<Thing>& things, Html& out) {
  constexpr std::size_t kMost = 12;
  for (std::size_t i = 0; i < things.size() && i < kMost; ++i) {
    if (i > 0) out << ", ";
    if (contents.Is(things[i], language::SECTION_SENSOR)) {
      WriteLink(contents, things[i], out);
    } else {
      WriteFullLink(contents, things[i], out);
    }
  }
  if (things.size() >= Contents::kMostUsers) {
    out << " and many more";
  } else if (things.size() > kMost) {
    out << " and " << things.size() - kMost << " more";
  }
}

// Who makes it run: sensors, devices, groups, globals and repeaters whose values lead to it.
void WriteActions(const Contents& contents, Html& out) {
  const Contents::Range actions = contents.Of(language::SECTION_ACTION);
  if (actions.size() == 0) return;
  out << "<div class=scroll role=region tabindex=0 aria-label=\"actions\"><table class=wide>"
         "<caption>Actions, and what makes them run</caption><thead><tr><th scope=col>action<th "
         "scope=col>called by<th scope=col>"
         "and through these by<tbody>\n";
  for (Thing action = actions.begin; action < actions.end; ++action) {
    std::set<Thing> callers;
    for (const browse::Link* link : contents.relations().To(action)) callers.insert(link->from);
    std::vector<Thing> origins;
    for (const Thing user : contents.UsersOf(action)) {
      const bool is_new = callers.find(user) == callers.end();
      if (is_new && !contents.Is(user, language::SECTION_ACTION)) origins.push_back(user);
    }
    out << "<tr><th scope=row>";
    WriteLink(contents, action, out);
    out << "<td>";
    WriteLinks(contents, {callers.begin(), callers.end()}, out);
    if (callers.empty()) out << "nothing in this machine";
    out << "<td>";
    WriteLinks(contents, origins, out);
    out << "\n";
  }
  out << "</table></div>";
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
          << "</a> of check and lint.";
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

void WriteOverview(const Contents& contents, Html& out) {
  out << "<section id=overview><h2>Overview</h2>";
  WriteVerdict(contents, out);
  WriteCounts(contents, out);
  WriteFacts(contents, out);
  WriteActions(contents, out);
  out << "</section>\n";
}

void WriteNavigation(const Contents& contents, Html& out) {
  const Background& background = contents.background();
  if (!background.index.empty())
    out << "<a href=\"" << Text{background.index} << "\">All machines</a>";
  out << "<a href=#overview>Overview</a>";
  if (background.changes && !background.changes->empty()) out << "<a href=#changes>Changes</a>";
  if (background.report && !background.report->diagnostics.empty())
    out << "<a href=#findings>Findings</a>";
  if (contents.Of(language::SECTION_SENSOR).size() != 0) out << "<a href=#sensors>Sensors</a>";
  out << "<a href=#groups>Groups</a><a href=#accesses>Buses</a><a href=#details>Details</a>";
}

}  // namespace rux::page
