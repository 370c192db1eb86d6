#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "advice/advice.h"
#include "advice/consequences.h"
#include "advice/message_advice.h"
#include "advice/places.h"
#include "advice/wording.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "run/log.h"
#include "run/run.h"
#include "sources/source_set.h"

namespace rux::advice {
namespace {

using diagnostics::Argument;
using diagnostics::Diagnostic;

const std::string& TextAt(const run::Finding& finding, std::size_t at) {
  return std::get<std::string>(finding.arguments[at]);
}

// `format` with its conversions, %s and %u, replaced by the arguments.
std::string Formatted(std::string_view format, const std::vector<Argument>& arguments) {
  std::string text;
  for (const Argument& argument : arguments) {
    const std::size_t percent = format.find('%');
    if (percent == std::string_view::npos) break;
    text.append(format, 0, percent).append(Shown(argument));
    format.remove_prefix(percent + 2);
  }
  return text.append(format);
}

// What the library reports, for those who look for it in a log.
std::string LibraryText(const run::Finding& finding) {
  std::string text = Formatted(finding.row->format, finding.arguments);
  if (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

void SetText(const run::Finding& finding, Diagnostic& diagnostic) {
  const ruxcomp::findings::Lead& lead = finding.row->lead;
  std::size_t next = lead.has_place ? 2 : 0;
  if (lead.has_section) diagnostic.section = TextAt(finding, next++);
  if (lead.has_entry) diagnostic.entry = TextAt(finding, next++);
  diagnostic.arguments.assign(finding.arguments.begin() + static_cast<std::ptrdiff_t>(next),
                              finding.arguments.end());
  const bool has_format = !lead.rest.empty();
  diagnostic.text = Formatted(has_format ? lead.rest : "%s", diagnostic.arguments);
}

// The library counts these sections and says no more.
void SetUnknownSection(const run::Finding& finding, Diagnostic& diagnostic) {
  diagnostic.section = TextAt(finding, 1);
  diagnostic.arguments = {*diagnostic.section};
}

Diagnostic DiagnosticOf(const run::Finding& finding) {
  Diagnostic diagnostic;
  diagnostic.row = finding.row;
  diagnostic.origin = finding.origin;
  diagnostic.other = finding.other;
  diagnostic.library_text = LibraryText(finding);
  finding.row == &ruxcomp::findings::rows::kUnknownSection ? SetUnknownSection(finding, diagnostic)
                                                           : SetText(finding, diagnostic);
  return diagnostic;
}

// Without a fact that the wording names, the library's text stays.
void SetWording(Wordings& wordings, Diagnostic& diagnostic) {
  if (diagnostic.row->wording.empty()) return;
  if (auto text = wordings.TextOf(diagnostic)) diagnostic.text = std::move(*text);
}

// A section that refers to itself has no other place to show.
void SetTextOfItself(Diagnostic& diagnostic) {
  const char* text = AdviceFor(diagnostic.row).of_itself;
  const ruxcomp::findings::Origin& other = diagnostic.other;
  const bool is_same = other.section != ruxcomp::findings::Origin::kNone &&
                       other.script == diagnostic.origin.script &&
                       other.section == diagnostic.origin.section;
  if (text == nullptr || !is_same) return;
  diagnostic.text = text;
  diagnostic.other = ruxcomp::findings::Origin();
}

// What cannot be read as a number; empty when it can.
std::string WhatRaised(Places& places, const ruxcomp::findings::Origin& at) {
  if (at.part == ruxcomp::findings::Origin::kKey) return "a part of the key without digits";
  const auto part = places.PartAt(at);
  if (!part) return "";
  return part->empty() ? "an empty operand" : std::string(*part) + " without digits";
}

}  // namespace

void AddDiagnosticsOf(const run::Result& result, const std::string& script,
                      const Consequences& consequences, Scope& scope,
                      diagnostics::Collection& collection) {
  Places places(result.sources, script);
  Wordings wordings(result.sources);
  for (const run::Finding& finding : result.findings) {
    if (consequences.Includes(finding)) continue;
    const diagnostics::Severity severity = consequences.SeverityOf(finding);
    if (!scope.Includes(result, finding, severity)) continue;
    collection.Add(*finding.row, severity, [&] {
      Diagnostic diagnostic = DiagnosticOf(finding);
      places.Locate(finding, diagnostic);
      SetWording(wordings, diagnostic);
      SetTextOfItself(diagnostic);
      consequences.AddNotes(finding, diagnostic);
      return diagnostic;
    });
  }
  result.tally.ForEachRest([&](const ruxcomp::findings::MessageRow& row, std::size_t count) {
    if (!consequences.IncludesRest(row)) {
      collection.AddRest(row, consequences.SeverityOf(row), count);
    }
  });
}

Diagnostic DiagnosticOfRaised(const run::Result& result, const std::string& script) {
  const ruxcomp::findings::Origin& at = result.raised->at;
  Diagnostic diagnostic;
  Places places(result.sources, script);
  const sources::OriginSpot spot = result.sources.At(at);
  const std::string what = spot.item != nullptr ? WhatRaised(places, at) : "";
  if (what.empty()) {
    diagnostic.row = &run::kLibraryError;
    diagnostic.text = "the library cannot continue: " + result.raised->text;
    diagnostic.at.path = script;
    return diagnostic;
  }
  diagnostic.row = &run::kUnreadableNumber;
  diagnostic.section = std::string(spot.section->name);
  diagnostic.entry = std::string(spot.item->key);
  diagnostic.text = what + " cannot be read as a number";
  if (const auto part = places.PartAt(at)) diagnostic.arguments = {std::string(*part)};
  places.Locate(at, Underline::kPlace, diagnostic);
  return diagnostic;
}

}  // namespace rux::advice
