#include "diff/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "machine/place.h"
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
    text += side->place->SafeText();
  }
  return text;
}

void WriteSide(const char* key, const Side& side, support::JsonObject& json) {
  json.Object(key, [&](support::JsonObject& object) {
    if (side.id) object.Member("id", *side.id);
    if (side.name) object.Member("name", *side.name);
    if (side.text) object.Member("value", *side.text);
    machine::WritePlace(object, side.place);
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
  std::string text = support::SafePath(report.before.name);
  if (report.after.name != report.before.name)
    text += " -> " + support::SafePath(report.after.name);
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
    json.Schema(1);
    json.Member("before", report.before.name);
    json.Member("after", report.after.name);
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

}  // namespace rux::diff
