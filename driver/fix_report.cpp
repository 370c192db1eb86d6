#include "driver/fix_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "driver/fixed_script.h"
#include "format/line_diff.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::driver {
namespace {

struct FixCounts {
  std::size_t fixes = 0;
  std::size_t files = 0;
  std::size_t offered = 0;
  std::size_t refused = 0;  // files
};

FixCounts CountsOf(const std::vector<FixedScript>& scripts) {
  FixCounts counts;
  for (const FixedScript& script : scripts) {
    counts.offered += script.offered;
    if (!script.refusal.empty()) ++counts.refused;
    if (!script.is_changed()) continue;
    counts.fixes += script.fixes.size();
    ++counts.files;
  }
  return counts;
}

bool IsConcerned(const FixedScript& script) { return !script.fixes.empty() || script.offered > 0; }

const char* StateOf(const FixedScript& script, bool is_done) {
  if (!script.refusal.empty()) return "refused";
  if (!script.is_changed()) return "unchanged";
  return is_done ? "fixed" : "fixable";
}

}  // namespace

std::string FixesText(const std::vector<FixedScript>& scripts) {
  std::string text;
  for (const FixedScript& script : scripts) {
    if (!script.is_changed()) continue;
    for (const FixMade& fix : script.fixes) {
      text += fmt::format("{}:{}:{}: {} [{}]\n", support::SafePath(script.path), fix.line,
                          fix.column, support::SafeText(fix.text), fix.id);
    }
  }
  return text;
}

std::string RefusalsText(const std::vector<FixedScript>& scripts) {
  std::string text;
  for (const FixedScript& script : scripts) {
    if (script.refusal.empty()) continue;
    text += support::SafePath(script.path) +
            support::SafeFormat(": error: {} [not fixed]\n", script.refusal);
  }
  return text;
}

std::string SummaryText(const std::vector<FixedScript>& scripts, bool is_done) {
  const FixCounts counts = CountsOf(scripts);
  std::string text = support::CountText(counts.fixes, "fix");
  if (!is_done) text += " to be made";
  if (counts.files > 0) text += " in " + support::CountText(counts.files, "file");
  if (counts.refused > 0) text += ", " + support::CountText(counts.refused, "file") + " not fixed";
  if (counts.offered > 0) text += fmt::format(" ({} more with --unsafe)", counts.offered);
  return text + '\n';
}

std::string DiffText(const std::vector<FixedScript>& scripts) {
  std::string text;
  for (const FixedScript& script : scripts) {
    if (!script.is_changed()) continue;
    text += format::UnifiedDiff(support::SafePath(script.path), script.text, script.fixed,
                                format::EmptyLines::kStay);
  }
  return text;
}

std::string FixesJson(const std::vector<FixedScript>& scripts, bool is_done) {
  return support::JsonDocument([&](support::JsonObject& json) {
    std::vector<FixedScript> shown;
    std::copy_if(scripts.begin(), scripts.end(), std::back_inserter(shown), IsConcerned);
    json.Objects("files", shown, [&](support::JsonObject& one, const FixedScript& script) {
      one.Member("file", script.path);
      one.Member("state", StateOf(script, is_done));
      if (!script.refusal.empty()) one.Member("reason", script.refusal);
      one.Objects("fixes", script.fixes, [](support::JsonObject& each, const FixMade& fix) {
        each.Member("id", fix.id);
        each.Member("line", fix.line);
        each.Member("column", fix.column);
        each.Member("text", fix.text);
      });
    });
    const FixCounts counts = CountsOf(scripts);
    json.Object("summary", [&](support::JsonObject& summary) {
      summary.Member("fixes", counts.fixes);
      summary.Member("files", counts.files);
      summary.Member("refused", counts.refused);
      summary.Member("offered", counts.offered);
    });
  });
}

}  // namespace rux::driver
