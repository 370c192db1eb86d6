#include "driver/format_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "driver/formatted_script.h"
#include "format/line_diff.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::driver {
namespace {

constexpr const char* kStateNames[] = {"formatted", "unformatted", "refused", "unreadable"};

const char* NameOf(FormatState state) { return kStateNames[static_cast<std::size_t>(state)]; }

bool IsLeft(const FormattedScript& script) {
  return script.state == FormatState::kRefused || script.state == FormatState::kUnreadable;
}

std::size_t CountOf(const std::vector<FormattedScript>& scripts, FormatState state) {
  return static_cast<std::size_t>(
      std::count_if(scripts.begin(), scripts.end(),
                    [&](const FormattedScript& script) { return script.state == state; }));
}

}  // namespace

std::string RefusalsText(const std::vector<FormattedScript>& scripts) {
  std::string text;
  for (const FormattedScript& script : scripts) {
    if (script.state == FormatState::kUnreadable) {
      text += support::SafeFormat("rux: error: {}\n", script.reason);
    }
    if (script.state != FormatState::kRefused) continue;
    text += support::SafePath(script.path);
    if (script.line != 0) text += fmt::format(":{}", script.line);
    text += support::SafeFormat(": error: {} [not formatted]\n", script.reason);
  }
  return text;
}

std::string SummaryText(const std::vector<FormattedScript>& scripts, bool is_done) {
  const std::size_t changed = CountOf(scripts, FormatState::kChanged);
  const std::size_t left =
      CountOf(scripts, FormatState::kRefused) + CountOf(scripts, FormatState::kUnreadable);
  std::string text = fmt::format(
      "{}: {} {}, {} unchanged", support::CountText(scripts.size(), "script"), changed,
      is_done ? "formatted" : "to be formatted", CountOf(scripts, FormatState::kUnchanged));
  if (left > 0) text += fmt::format(", {} not formatted", left);
  return text + '\n';
}

std::string NamesText(const std::vector<FormattedScript>& scripts) {
  std::string text;
  for (const FormattedScript& script : scripts) {
    if (script.state == FormatState::kChanged) text += support::SafePath(script.path) + '\n';
  }
  return text;
}

std::string DiffText(const std::vector<FormattedScript>& scripts) {
  std::string text;
  for (const FormattedScript& script : scripts) {
    if (script.state != FormatState::kChanged) continue;
    text += format::UnifiedDiff(support::SafePath(script.path), script.text, script.formatted);
  }
  return text;
}

std::string FormatJson(const std::vector<FormattedScript>& scripts) {
  return support::JsonDocument([&](support::JsonObject& json) {
    json.Objects("scripts", scripts, [](support::JsonObject& one, const FormattedScript& script) {
      one.Member("script", script.path);
      one.Member("state", NameOf(script.state));
      if (!IsLeft(script)) return;
      if (script.line != 0) one.Member("line", script.line);
      one.Member("reason", script.reason);
    });
    json.Object("summary", [&](support::JsonObject& summary) {
      for (const FormatState state : {FormatState::kUnchanged, FormatState::kChanged,
                                      FormatState::kRefused, FormatState::kUnreadable}) {
        summary.Member(NameOf(state), CountOf(scripts, state));
      }
    });
  });
}

}  // namespace rux::driver
