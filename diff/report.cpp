#include "diff/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/report.h"
#include "diff/change.h"
#include "diff/classes.h"
#include "findings/message_row.h"
#include "machine/origins.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/text_stream.h"

namespace rux::diff {
namespace {

// "old.rux:12 -> new.rux:14", or the place that is known; empty when none is.
std::string PlacesText(const Change& change) {
  std::string text;
  for (const Side* side : {&change.before, &change.after}) {
    if (!side->place) continue;
    if (!text.empty()) text += " -> ";
    text += fmt::format("{}:{}", support::SafePath(side->place->path), side->place->line);
  }
  return text;
}

diagnostics::Location LocationOf(const Side& side, const std::string& file) {
  diagnostics::Location at;
  at.path = side.place ? side.place->path : file;
  at.first_line = side.place ? side.place->line : 0;
  return at;
}

// In the new machine, where that has it; the other one is a note.
diagnostics::Diagnostic DiagnosticOf(const Report& report, const Change& change) {
  using ruxcomp::findings::Severity;
  const bool is_gone = change.before.place && !change.after.place;
  diagnostics::Diagnostic diagnostic;
  diagnostic.row = change.row->message;
  diagnostic.severity = report.Fails(change) ? Severity::kError : Severity::kNote;
  const std::string what = change.WhatText();
  diagnostic.text = fmt::format("{}: {}{}{}", change.SectionText(), change.row->message->summary,
                                what.empty() ? "" : ": ", what);
  diagnostic.at =
      is_gone ? LocationOf(change.before, report.before) : LocationOf(change.after, report.after);
  if (!is_gone && change.before.place)
    diagnostic.notes.push_back({"before", LocationOf(change.before, report.before)});
  return diagnostic;
}

diagnostics::Report DiagnosticsOf(const Report& report) {
  diagnostics::Report all;
  all.script = report.after;
  for (const Change& change : report.changes) {
    all.diagnostics.push_back(DiagnosticOf(report, change));
    if (report.Fails(change)) ++all.errors;
    auto& counts = all.by_message;
    const auto known = std::find_if(counts.begin(), counts.end(), [&](const auto& count) {
      return count.row == change.row->message;
    });
    if (known == counts.end()) {
      counts.push_back({change.row->message, 1, 1});
    } else {
      ++known->all;
      ++known->kept;
    }
  }
  return all;
}

void WritePlace(const char* key, const Side& side, support::JsonObject& json) {
  if (!side.place) return;
  json.Object(key, [&](support::JsonObject& place) {
    place.Member("file", side.place->path);
    place.Member("line", side.place->line);
  });
}

void WriteSide(const char* key, const Side& side, support::JsonObject& json) {
  json.Object(key, [&](support::JsonObject& object) {
    if (side.id) object.Member("id", *side.id);
    if (side.name) object.Member("name", *side.name);
    if (side.text) object.Member("value", *side.text);
    WritePlace("place", side, object);
  });
}

}  // namespace

void WriteChange(const Change& change, support::JsonObject& json) {
  json.Member("class", change.row->message->id);
  json.Member("category", WordOf(change.row->category));
  json.Member("kind", change.kind->keyword);
  if (!change.entry.empty()) json.Member("entry", change.entry);
  if (!change.part.empty()) json.Member("part", change.part);
  WriteSide("before", change.before, json);
  WriteSide("after", change.after, json);
  json.Member("fingerprint", change.Fingerprint());
}

bool Report::Fails(const Change& change) const {
  return std::find(fails.begin(), fails.end(), change.row) != fails.end();
}

std::size_t Report::CountOf(Category category) const {
  return static_cast<std::size_t>(
      std::count_if(changes.begin(), changes.end(),
                    [&](const Change& change) { return change.row->category == category; }));
}

std::string SummaryText(const Report& report) {
  std::string text = support::SafePath(report.before);
  if (report.after != report.before) text += " -> " + support::SafePath(report.after);
  text += ": ";
  text +=
      report.changes.empty() ? "no changes" : support::CountText(report.changes.size(), "change");
  const char* separator = ": ";
  for (std::size_t i = 0; i < kCategoryCount; ++i) {
    const std::size_t count = report.CountOf(static_cast<Category>(i));
    if (count == 0) continue;
    text += fmt::format("{}{} {}", separator, count, kCategoryWords[i]);
    separator = ", ";
  }
  if (report.in_baseline > 0) text += fmt::format(" ({} in the baseline)", report.in_baseline);
  return text + '\n';
}

void WriteText(const Report& report, bool uses_colour, support::TextStream& out) {
  out += SummaryText(report);
  WriteChanges(report.changes, uses_colour, out);
}

void WriteChanges(const std::vector<Change>& changes, bool uses_colour, support::TextStream& out) {
  std::string last;
  for (const Change& change : changes) {
    std::string section = change.SectionText();
    if (section != last) out += support::Bold(section, uses_colour) + '\n';
    last = std::move(section);
    const std::string what = change.WhatText();
    out += fmt::format("  {}{}[{}]\n", what, what.empty() ? "" : "  ", change.row->message->id);
    const std::string places = PlacesText(change);
    if (!places.empty()) out += fmt::format("    {}\n", places);
  }
}

void WriteStatistics(const Report& report, support::TextStream& out) {
  out += SummaryText(report);
  for (const ClassRow& row : kClasses) {
    const auto count = std::count_if(report.changes.begin(), report.changes.end(),
                                     [&](const Change& change) { return change.row == &row; });
    if (count > 0)
      out += fmt::format("{:>6}  {:<10} {}\n", count, WordOf(row.category), row.message->id);
  }
}

void WriteJson(const Report& report, support::TextStream& out) {
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Member("schema", 1);
    json.Member("before", report.before);
    json.Member("after", report.after);
    json.Object("counts", [&](support::JsonObject& counts) {
      for (std::size_t i = 0; i < kCategoryCount; ++i)
        counts.Member(kCategoryWords[i], report.CountOf(static_cast<Category>(i)));
    });
    json.Member("in_baseline", report.in_baseline);
    json.Objects("changes", report.changes, [&](support::JsonObject& object, const Change& change) {
      WriteChange(change, object);
      object.Member("fails", report.Fails(change));
    });
  });
}

void WriteGithub(const Report& report, support::TextStream& out) {
  diagnostics::WriteGithubText(DiagnosticsOf(report), out);
}

void WriteSarif(const Report& report, support::TextStream& out) {
  diagnostics::WriteSarifReport(DiagnosticsOf(report), out);
}

}  // namespace rux::diff
