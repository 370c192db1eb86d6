#include "cases/report.h"

#include <fmt/format.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "evaluation/result.h"
#include "machine/place.h"
#include "profile/profile.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::cases {
namespace {

std::string PlaceSuffix(const std::optional<machine::Place>& place) {
  return place ? "  " + place->SafeText() : "";
}

void WriteMismatch(const CaseResult& result, const Mismatch& mismatch, support::TextStream& out) {
  out += "      " + support::SafePath(result.source->file);
  out += support::SafeFormat(":{}: {}\n", mismatch.line, mismatch.text);
  for (const Remark& remark : mismatch.remarks) {
    out += "        " + support::SafeText(remark.text) + PlaceSuffix(remark.place) + '\n';
  }
}

void WriteCoverage(const FileResult& file, bool has_missing, support::TextStream& out) {
  out += "coverage:\n";
  for (const CoveredKind& kind : file.coverage) {
    const std::optional<std::size_t> percent = kind.percent();
    out += fmt::format("  {:<9}{:>4} {}  {}  {}\n", kind.name,
                       percent ? std::to_string(*percent) : "-", percent ? '%' : ' ',
                       kind.CountText(), kind.what);
    if (!has_missing) continue;
    for (const auto* things : {&kind.missing, &kind.left_out}) {
      for (const CoveredThing& thing : *things)
        out += "    " + support::SafeText(thing.Text()) + PlaceSuffix(thing.place) + '\n';
    }
  }
}

void WriteDifference(const Difference& difference, support::JsonObject& json) {
  if (!difference.path.empty()) json.Member("path", difference.path);
  json.Member("what", difference.what);
  json.Member("expected", difference.expected);
  json.Member("found", difference.found);
}

void WriteReading(support::JsonObject& json, const GivenReading* reading) {
  json.Member("key", reading->key);
  json.Member("line", reading->line);
  json.Array("numbers", [&](support::JsonArray& numbers) {
    for (const evaluation::Number number : reading->sequence)
      numbers.Item(support::JsonNumber{evaluation::TextOf(number)});
  });
}

void WriteCase(support::JsonObject& json, const CaseResult& result) {
  json.Member("name", result.source->name);
  json.Member("file", result.source->file);
  json.Member("line", result.source->line);
  json.Member("passes", result.passes());
  json.Objects("mismatches", result.mismatches,
               [](support::JsonObject& member, const Mismatch& mismatch) {
                 member.Member("line", mismatch.line);
                 member.Member("text", mismatch.text);
                 if (mismatch.difference) WriteDifference(*mismatch.difference, member);
                 member.Objects("readings", mismatch.readings, WriteReading);
                 member.Objects("remarks", mismatch.remarks,
                                [](support::JsonObject& remark, const Remark& each) {
                                  remark.Member("text", each.text);
                                  machine::WritePlace(remark, each.place);
                                });
               });
  json.Objects("unused", result.unused, WriteReading);
}

void WriteThing(support::JsonObject& json, const CoveredThing& thing) {
  json.Member("text", thing.Text());
  machine::WritePlace(json, thing.place);
}

void WriteKind(support::JsonObject& json, const CoveredKind& kind) {
  json.Member("kind", kind.name);
  json.Member("all", kind.all());
  json.Member("covered", kind.covered());
  json.Objects("missing", kind.missing, WriteThing);
  json.Objects("not_compared", kind.left_out, WriteThing);
}

}  // namespace

std::size_t FileResult::failed() const { return CountFailed(results); }

void WriteText(const std::vector<FileResult>& files, const ReportOptions& options,
               support::TextStream& out) {
  for (const FileResult& file : files) {
    out += profile::TitleOf(file.profile) + '\n';
    out += support::SafeFormat("{}: {}\n", file.file.path, file.file.machine);
    for (const CaseResult& result : file.results) {
      if (result.passes() && options.only_failed) continue;
      out += support::SafeFormat("  {}  {}\n", result.passes() ? "ok    " : "FAILED",
                                 result.source->name);
      for (const Mismatch& mismatch : result.mismatches) WriteMismatch(result, mismatch, out);
    }
    out += fmt::format("{}, {} failed\n", support::CountText(file.results.size(), "case"),
                       file.failed());
    if (options.has_coverage) WriteCoverage(file, options.has_missing, out);
  }
}

void WriteJson(const std::vector<FileResult>& files, const ReportOptions& options,
               support::TextStream& out) {
  support::WriteJson(out, [&](support::JsonObject& json) {
    json.Schema(1);
    json.Objects("files", files, [&](support::JsonObject& member, const FileResult& file) {
      member.Member("file", file.file.path);
      member.Member("machine", file.file.machine);
      profile::WriteProfile(file.profile, member);
      member.Member("failed", file.failed());
      member.Objects("cases", file.results, WriteCase);
      if (options.has_coverage) member.Objects("coverage", file.coverage, WriteKind);
    });
  });
}

}  // namespace rux::cases
