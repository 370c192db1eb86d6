// The forms of a report that people read in a browser.
#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "diff/report.h"
#include "support/markup_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::diff {
namespace {

// What is shown of a change in a row of a table.
struct Cells {
  std::string section;
  std::string entry;
  std::string before;
  std::string after;
  std::string_view change;
};

constexpr std::string_view kTitles[] = {"section", "entry", "before", "after", "change"};

Cells CellsOf(const Change& change) {
  const auto text = [](const Side& side) { return support::SafeText(side.text.value_or("")); };
  return {change.SectionText(), change.EntryText(), text(change.before), text(change.after),
          change.row->message->id};
}

bool IsLimit(const Change& change) { return change.row->category == Category::kLimits; }

// Calls write(title, changes) for the limits and for all else, unless there are none.
template <class Write>
void ForEachTable(const Report& report, Write write) {
  for (const bool is_limit : {true, false}) {
    std::vector<const Change*> changes;
    for (const Change& change : report.changes) {
      if (IsLimit(change) == is_limit) changes.push_back(&change);
    }
    if (!changes.empty()) write(is_limit ? "Limits" : "Other changes", changes);
  }
}

// The summary without the line feed.
std::string Summary(const Report& report) {
  std::string text = SummaryText(report);
  text.pop_back();
  return text;
}

}  // namespace

void WriteMarkdown(const Report& report, support::TextStream& out) {
  out += support::MarkdownText(Summary(report)) + '\n';
  ForEachTable(report, [&](const char* title, const std::vector<const Change*>& changes) {
    out += fmt::format("\n### {}\n\n|", title);
    for (const std::string_view column : kTitles) out += fmt::format(" {} |", column);
    out += "\n|";
    for (std::size_t i = 0; i < sizeof kTitles / sizeof *kTitles; ++i) out += "---|";
    out += '\n';
    for (const Change* change : changes) {
      const Cells cells = CellsOf(*change);
      out += fmt::format("| {} | {} | {} | {} | {} |\n", support::MarkdownText(cells.section),
                         support::MarkdownText(cells.entry), support::MarkdownText(cells.before),
                         support::MarkdownText(cells.after), cells.change);
    }
  });
}

void WriteHtml(const Report& report, support::TextStream& out) {
  out += support::HtmlHead("Changes of a machine");
  out += fmt::format("<p>{}</p>\n", support::MarkupText(Summary(report)));
  ForEachTable(report, [&](const char* title, const std::vector<const Change*>& changes) {
    out += fmt::format("<h2>{}</h2>\n<table>\n<tr>", title);
    for (const std::string_view column : kTitles) out += fmt::format("<th>{}</th>", column);
    out += "</tr>\n";
    for (const Change* change : changes) {
      const Cells cells = CellsOf(*change);
      out += report.Fails(*change) ? "<tr class=\"fails\">" : "<tr>";
      for (const std::string_view cell :
           {std::string_view(cells.section), std::string_view(cells.entry),
            std::string_view(cells.before), std::string_view(cells.after), cells.change})
        out += fmt::format("<td>{}</td>", support::MarkupText(cell));
      out += "</tr>\n";
    }
    out += "</table>\n";
  });
  out += support::kHtmlEnd;
}

}  // namespace rux::diff
