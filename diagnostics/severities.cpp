#include "diagnostics/severities.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/registry.h"
#include "findings/message_row.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::diagnostics {
namespace {

using ruxcomp::findings::WordOf;

constexpr std::string_view kAll = "all";
constexpr std::string_view kNone = "none";
constexpr std::string_view kError = "error";
constexpr std::string_view kReport;
constexpr std::string_view kDrop = "no-";
constexpr std::string_view kRaise = "error=";
constexpr std::string_view kLower = "no-error=";

const Group* FindGroup(std::string_view name) {
  const Group* group = std::find_if(std::begin(kGroups), std::end(kGroups),
                                    [&](const Group& each) { return WordOf(each.level) == name; });
  return group == std::end(kGroups) ? nullptr : group;
}

// Whether a setting may name the message.
bool CanBeSet(const MessageRow& row) {
  return row.severity == Severity::kWarning || row.may_be_lowered();
}

// `choice` as it is, with what `other` says in place of it.
template <class Choice>
void Apply(const Choice& other, Choice& choice) {
  if (other.is_reported) choice.is_reported = other.is_reported;
  if (other.is_raised) choice.is_raised = other.is_raised;
}

}  // namespace

// The longest first.
const Severities::Prefix Severities::kPrefixes[] = {
    {kLower, {std::nullopt, false}},
    {kRaise, {true, true}},
    {kDrop, {false, std::nullopt}},
    {kReport, {true, std::nullopt}},
};

std::vector<SeveritySetting> SeveritySettings(const Registry& registry) {
  std::vector<SeveritySetting> settings = {
      {std::string(kAll), "all warnings"},
      {std::string(kNone), "no warnings"},
      {std::string(kError), "every reported warning is an error"},
  };
  const auto add = [&](std::string_view name, std::string_view about) {
    for (const std::string_view prefix : {kReport, kDrop, kRaise, kLower}) {
      settings.push_back({std::string(prefix).append(name), about});
    }
  };
  for (const Group& group : kGroups) add(WordOf(group.level), group.about);
  for (const MessageRow* row : registry.rows()) {
    if (row->severity == Severity::kWarning) add(row->id, row->summary);
    if (row->may_be_lowered()) {
      settings.push_back({std::string(kLower).append(row->id), row->summary});
    }
  }
  return settings;
}

std::string Severities::Set(const std::string& settings) {
  std::string_view left = settings;
  while (true) {
    const std::size_t comma = left.find(',');
    const std::string trouble = SetOne(left.substr(0, comma));
    if (!trouble.empty() || comma == std::string_view::npos) return trouble;
    left.remove_prefix(comma + 1);
  }
}

std::string Severities::SetOne(std::string_view setting) {
  if (setting == kError) {
    RaiseAll();
    return "";
  }
  if (setting == kNone) {
    own_.all.is_reported = false;
    return "";
  }
  const Prefix* prefix = std::find_if(
      std::begin(kPrefixes), std::end(kPrefixes),
      [&](const Prefix& each) { return setting.substr(0, each.text.size()) == each.text; });
  const std::string_view name = setting.substr(prefix->text.size());
  Choice* target = FindTarget(name);
  if (target == nullptr) return UnknownText(name);
  const MessageRow* row = registry_.Find(name);
  if (row != nullptr && row->may_be_lowered() && !prefix->choice.is_reported.value_or(true)) {
    return fmt::format("{0} is an error: {1}{0} makes it a warning, but it cannot be suppressed",
                       name, kLower);
  }
  Apply(prefix->choice, *target);
  return "";
}

Severities::Choice* Severities::FindTarget(std::string_view name) {
  if (name == kAll) return &own_.all;
  if (const Group* group = FindGroup(name)) return &own_.by_group[group->level];
  const MessageRow* row = registry_.Find(name);
  return row != nullptr && CanBeSet(*row) ? &own_.by_row[row] : nullptr;
}

std::string Severities::UnknownText(std::string_view name) const {
  if (const MessageRow* row = registry_.Find(name)) {
    return fmt::format("{} is not a warning but {} {}", name,
                       row->severity == Severity::kError ? "an" : "a", WordOf(row->severity));
  }
  std::vector<std::string> names;
  for (const SeveritySetting& setting : SeveritySettings(registry_)) names.push_back(setting.text);
  const std::vector<std::string> near = support::Nearest(std::string(name), names, 1);
  if (!near.empty()) {
    return fmt::format("no such warning or group: {}; did you mean {}?", support::NameText(name),
                       near.front());
  }
  return fmt::format(
      "expected a group (loss, suspect, style), the id of a warning, all, none or error, found {}",
      support::NameText(name));
}

void Severities::ApplyOwn(const Choices& choices, const MessageRow& row, Choice& choice) {
  const auto own = choices.by_row.find(&row);
  if (own != choices.by_row.end()) Apply(own->second, choice);
}

Ruling Severities::RulingOn(const MessageRow& row, Severity severity) const {
  Choice choice;
  if (row.may_be_lowered()) {
    for (const Choices* choices : {&project_, &own_}) ApplyOwn(*choices, row, choice);
    return {choice.is_raised.value_or(true) ? severity : Severity::kWarning};
  }
  if (severity != Severity::kWarning) return {severity};
  for (const Choices* choices : {&project_, &own_}) {
    Apply(choices->all, choice);
    const auto group = choices->by_group.find(row.level);
    if (group != choices->by_group.end()) Apply(group->second, choice);
    ApplyOwn(*choices, row, choice);
  }
  const bool is_for_purpose =
      purpose_ == Purpose::kFix || (row.level == Level::kStyle) == (purpose_ == Purpose::kLint);
  if (!choice.is_reported.value_or(is_for_purpose)) {
    return {severity, true, choice.is_reported.has_value()};
  }
  return {choice.is_raised.value_or(false) ? Severity::kError : severity};
}

}  // namespace rux::diagnostics
