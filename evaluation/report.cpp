#include "evaluation/report.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <string_view>

#include "evaluation/bands.h"
#include "evaluation/result.h"
#include "evaluation/round.h"
#include "evaluation/target.h"
#include "evaluation/trace.h"
#include "machine/place.h"
#include "profile/profile.h"
#include "ruxcomp/language/entries.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::evaluation {
namespace {

// "  cpu.rux:12"; empty when it is not known.
std::string PlaceText(const std::optional<machine::Place>& place) {
  return place ? "  " + place->SafeText() : "";
}

// "degrees C"; empty when the profile or the sensor names no unit.
std::string_view UnitOf(const Report& report) {
  const std::optional<std::string>& property = report.profile.unit_property.stated;
  if (!property || !report.outcome.band) return "";
  return PropertyOf(report.target.section, *property);
}

std::string ValueLine(std::string_view what, const Result& result, std::string_view unit) {
  return support::SafeFormat("{}: {}{}{}\n", what, result.Text(),
                             unit.empty() || !result.IsNumber() ? "" : " ",
                             result.IsNumber() ? unit : "");
}

std::string LimitLine(const Report& report, const SensorLimit& limit, const std::string& when) {
  const bool is_high = limit.row->side == language::LimitSide::kMost;
  return fmt::format("  beyond {} ({} {}){}{}\n", language::KeywordOf(limit.row->entry),
                     is_high ? "at most" : "at least", TextOf(limit.number), when,
                     PlaceText(PlaceOf(report.machine, report.target.section, limit.entry)));
}

void WriteBand(const Report& report, const Band& band, support::TextStream& out) {
  out += support::SafeFormat("band: {}\n", band.Text());
  for (const SensorLimit& limit : band.beyond) out += LimitLine(report, limit, "");
  if (!band.pending) return;
  const std::string when =
      fmt::format(" for {} of {} readings", band.pending->seen, band.pending->needed);
  for (const SensorLimit& limit : band.pending->beyond) out += LimitLine(report, limit, when);
  if (band.pending->beyond.empty()) out += fmt::format("  within the limits{}\n", when);
}

void WriteEffects(const Effects& effects, support::TextStream& out) {
  for (const CallMade& call : effects.calls())
    out += support::SafeFormat("calls {}\n", call.Text());
  for (const AccessMade& access : effects.accesses()) {
    if (access.is_write) out += fmt::format("writes {}\n", access.key);
  }
  if (const std::optional<Result>& obstacle = effects.obstacle())
    out += support::SafeFormat("more calls and writes: {}\n", obstacle->Text());
}

void WriteTrace(const Trace& trace, support::TextStream& out) {
  out += "trace:\n";
  for (const TraceStep& step : trace.steps()) {
    out += std::string(2 * step.depth + 2, ' ');
    out += support::SafeFormat("{} = {}", step.what, step.result.Text());
    if (!step.text.empty()) out += support::SafeFormat("  {}", step.text);
    out += PlaceText(step.place) + '\n';
  }
}

void WriteLimit(support::JsonObject& json, const SensorLimit& limit) {
  json.Member("limit", language::KeywordOf(limit.row->entry));
  json.Member("number", support::JsonNumber{TextOf(limit.number)});
}

void WriteBand(const Band& band, support::JsonObject& json) {
  json.Object("band", [&](support::JsonObject& member) {
    member.Member("name", band.Name());
    if (band.obstacle) member.Member("reason", band.obstacle->reason());
    member.Objects("beyond", band.beyond, WriteLimit);
    if (!band.pending) return;
    member.Object("pending", [&](support::JsonObject& pending) {
      pending.Objects("beyond", band.pending->beyond, WriteLimit);
      pending.Member("seen", band.pending->seen);
      pending.Member("needed", band.pending->needed);
    });
  });
}

void WriteStep(support::JsonObject& json, const TraceStep& step) {
  json.Member("depth", step.depth);
  json.Member("what", step.what);
  if (!step.text.empty()) json.Member("text", step.text);
  json.Object("result", [&](support::JsonObject& member) { WriteResult(step.result, member); });
  machine::WritePlace(json, step.place);
}

}  // namespace

void WriteText(const Report& report, support::TextStream& out) {
  out += profile::TitleOf(report.profile) + '\n';
  out += ValueLine(report.target.Path(), report.outcome.value, UnitOf(report));
  if (report.outcome.ipmi) out += ValueLine("VALUE_IPMI", *report.outcome.ipmi, "");
  if (report.outcome.band) WriteBand(report, *report.outcome.band, out);
  WriteEffects(report.effects, out);
  if (report.trace != nullptr) WriteTrace(*report.trace, out);
}

void WriteResult(const Result& result, support::JsonObject& json) {
  json.Member("kind", NameOf(result.kind()));
  if (result.IsNumber()) {
    json.Member("number", support::JsonNumber{TextOf(result.number())});
  } else {
    json.Member("reason", result.reason());
  }
}

void WriteJson(const Report& report, support::JsonObject& json) {
  json.Schema(1);
  profile::WriteProfile(report.profile, json);
  json.Member("machine", report.machine.name());
  json.Member("path", report.target.Path());
  json.Object("value",
              [&](support::JsonObject& member) { WriteResult(report.outcome.value, member); });
  if (const std::string_view unit = UnitOf(report); !unit.empty()) json.Member("unit", unit);
  if (report.outcome.ipmi) {
    json.Object("ipmi",
                [&](support::JsonObject& member) { WriteResult(*report.outcome.ipmi, member); });
  }
  if (report.outcome.band) WriteBand(*report.outcome.band, json);
  json.Objects("calls", report.effects.calls(),
               [](support::JsonObject& call, const CallMade& each) {
                 call.Member("action", each.action);
                 call.Objects("arguments", each.arguments,
                              [](support::JsonObject& argument, const Result& result) {
                                WriteResult(result, argument);
                              });
               });
  json.Objects("accesses", report.effects.accesses(),
               [](support::JsonObject& access, const AccessMade& each) {
                 access.Member("key", each.key);
                 access.Member("is_write", each.is_write);
                 access.Object("result", [&](support::JsonObject& member) {
                   WriteResult(each.result, member);
                 });
               });
  if (const std::optional<Result>& obstacle = report.effects.obstacle()) {
    json.Object("more", [&](support::JsonObject& member) { WriteResult(*obstacle, member); });
  }
  if (report.trace != nullptr) json.Objects("trace", report.trace->steps(), WriteStep);
}

}  // namespace rux::evaluation
