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

// A text as Markdown that means nothing but itself.
std::string InMarkdown(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (std::string_view("\\`*_{}[]<#|~&").find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// The summary without the line feed.
std::string Summary(const Report& report) {
  std::string text = SummaryText(report);
  text.pop_back();
  return text;
}

constexpr std::string_view kHtmlHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Changes of a machine</title>
<style>
body { font-family: sans-serif; margin: 2em; }
table { border-collapse: collapse; }
th, td { border: 1px solid #999; padding: 0.3em 0.6em; text-align: left; }
tr.fails td { background: #fdd; color: #000; }
</style>
</head>
<body>
<h1>Changes of a machine</h1>
)";

}  // namespace

void WriteMarkdown(const Report& report, support::TextStream& out) {
  out += InMarkdown(Summary(report)) + '\n';
  ForEachTable(report, [&](const char* title, const std::vector<const Change*>& changes) {
    out += fmt::format("\n### {}\n\n|", title);
    for (const std::string_view column : kTitles) out += fmt::format(" {} |", column);
    out += "\n|";
    for (std::size_t i = 0; i < sizeof kTitles / sizeof *kTitles; ++i) out += "---|";
    out += '\n';
    for (const Change* change : changes) {
      const Cells cells = CellsOf(*change);
      out += fmt::format("| {} | {} | {} | {} | {} |\n", InMarkdown(cells.section),
                         InMarkdown(cells.entry), InMarkdown(cells.before), InMarkdown(cells.after),
                         cells.change);
    }
  });
}

void WriteHtml(const Report& report, support::TextStream& out) {
  out += kHtmlHead;
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
  out += "</body>\n</html>\n";
}

}  // namespace rux::diff
