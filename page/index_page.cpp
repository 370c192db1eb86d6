#include "page/index_page.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "browse/relations.h"
#include "diff/change.h"
#include "diff/classes.h"
#include "page/contents.h"
#include "page/document.h"
#include "page/grid.h"
#include "page/html.h"
#include "page/marks.h"
#include "ruxcomp/language/sections.h"
#include "support/number_text.h"

namespace rux::page {
namespace {

// Those whose numbers say how large a machine is.
constexpr language::SectionId kCounted[] = {language::SECTION_SENSOR, language::SECTION_DEVICE,
                                            language::SECTION_ACTION, language::SECTION_TABLE};

// "3 name 1, limits 2"
void WriteChanges(const Contents& contents, const std::string& link, Html& out) {
  if (contents.background().is_new) out << "<em class=c>new</em>";
  const auto& changes = contents.background().changes;
  if (!changes) return;
  if (changes->empty()) {
    out << "0";
    return;
  }
  std::array<std::size_t, diff::kCategoryCount> counts{};
  for (const diff::Change& change : *changes)
    ++counts[static_cast<std::size_t>(change.row->category)];
  out << "<a href=\"" << Text{link} << "#changes\">" << changes->size() << "</a> <small>";
  const char* lead = "";
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] == 0) continue;
    out << Text{lead} << Text{diff::kCategoryWords[i]} << " " << counts[i];
    lead = ", ";
  }
  out << "</small>";
}

Html MachineRow(const Contents& contents, const std::string& machine, const std::string& link) {
  Html row;
  row << "<tr><th scope=row><a href=\"" << Text{link} << "\">" << Text{contents.Title()}
      << "</a><td>" << Text{machine};
  for (const language::SectionId kind : kCounted) row << "<td>" << contents.Of(kind).size();
  const auto& report = contents.background().report;
  row << "<td>";
  if (report) row << report->errors + report->warnings;
  if (contents.background().is_new || contents.background().changes) {
    row << "<td>";
    WriteChanges(contents, link, row);
  }
  return row;
}

Html ThingRow(const Contents& contents, Thing thing, const std::string& machine,
              const std::string& link) {
  const browse::Thing& what = contents.At(thing);
  Html row;
  row << "<tr><th scope=row><a href=\"" << Text{link} << "#t" << thing << "\">"
      << Text{NameOf(what)} << "</a>";
  WriteMarks(contents, thing, row);
  row << "<td>" << Text{what.kind->keyword} << "<td>";
  if (what.id) row << "0x" << Text{fmt::format("{:X}", *what.id)};
  row << "<td>" << Text{machine};
  return row;
}

Grid MachineGrid(const std::string& before) {
  Html caption;
  caption << "All machines";
  if (!before.empty()) caption << ", compared with " << Text{before};
  Grid grid("machines", caption);
  grid.AddColumn(Html() << "machine");
  grid.AddColumn(Html() << "file");
  for (const language::SectionId kind : kCounted)
    grid.AddColumn(Html() << Text{language::KindOf(kind).keyword}, Grid::Align::kNumber);
  grid.AddColumn(Html() << "findings", Grid::Align::kNumber);
  if (!before.empty()) grid.AddColumn(Html() << "changes");
  return grid;
}

Grid ThingGrid() {
  Html caption;
  caption << "What they consist of";
  Grid grid("sections", caption);
  for (const char* title : {"name", "kind", "ID", "file"}) grid.AddColumn(Html() << Text{title});
  return grid;
}

}  // namespace

IndexPage::IndexPage(const std::string& before)
    : machines_(MachineGrid(before)), things_(ThingGrid()) {}

std::string IndexPage::EntriesOf(const Contents& contents, const std::string& machine,
                                 const std::string& link) {
  Html rows;
  rows << MachineRow(contents, machine, link) << "\n";
  for (Thing thing = 0; thing < contents.relations().things().size(); ++thing) {
    if (contents.At(thing).kind->naming != language::Naming::kUnnamed)
      rows << ThingRow(contents, thing, machine, link) << "\n";
  }
  return rows.markup();
}

void IndexPage::Add(std::string_view entries) {
  ++count_;
  bool is_first = true;
  while (!entries.empty()) {
    const std::size_t end = entries.find('\n');
    Html row;
    row.Trusted(entries.substr(0, end));
    (is_first ? machines_ : things_).AddRow(row);
    is_first = false;
    entries.remove_prefix(end + 1);
  }
}

void IndexPage::AddWithoutPage(const std::string& machine, const Html& note) {
  Html row;
  row << "<tr><th scope=row>" << Text{machine} << "<td colspan=" << machines_.columns() - 1 << ">"
      << note;
  machines_.AddRow(row);
}

void IndexPage::AddGone(const std::string& machine) {
  ++gone_;
  AddWithoutPage(machine, Html() << "<em class=c>gone</em>");
}

void IndexPage::AddFailed(const std::string& machine, const std::string& reason) {
  ++count_;
  // As it is reported, without what names the program.
  constexpr std::string_view kLead = "rux: error: ";
  std::string_view text = std::string_view(reason).substr(0, reason.find('\n'));
  if (text.substr(0, kLead.size()) == kLead) text.remove_prefix(kLead.size());
  AddWithoutPage(machine, Html() << "<em class=w>no page</em> " << Text{text});
}

std::string IndexPage::Document(const std::string& title) const {
  Html navigation;
  navigation << "<a href=#overview>Machines</a><a href=#things>Sections</a>";
  Html body;
  WriteHead(title.empty() ? "Machines" : title, navigation, body);
  body << "<section id=overview><h2>" << Text{support::CountText(count_, "machine")};
  if (gone_ > 0) body << ", " << gone_ << " gone";
  body << "</h2>";
  machines_.Write(body);
  body << "</section>\n<section id=things><h2>Sections</h2>";
  things_.Write(body);
  body << "</section>\n";
  WriteEnd(body);
  return body.Take();
}

}  // namespace rux::page
