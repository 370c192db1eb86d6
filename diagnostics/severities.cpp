#include "diagnostics/severities.h"

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/registry.h"

namespace rux::diagnostics {
namespace {

constexpr std::string_view kAll = "error";
constexpr std::string_view kRaise = "error=";
constexpr std::string_view kDrop = "no-";

bool BeginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

}  // namespace

std::vector<SeveritySetting> SeveritySettings(const Registry& registry) {
  std::vector<SeveritySetting> settings = {{std::string(kAll), "all warnings"}};
  for (const MessageRow* row : registry.rows()) {
    if (row->severity != Severity::kWarning) continue;
    for (const std::string_view beginning : {kRaise, kDrop}) {
      settings.push_back({std::string(beginning).append(row->id), row->summary});
    }
  }
  return settings;
}

std::string Severities::Set(const std::string& setting) {
  if (setting == kAll) {
    RaiseAll();
    return "";
  }
  const bool raises = BeginsWith(setting, kRaise);
  if (!raises && !BeginsWith(setting, kDrop)) return "write error, error=ID or no-ID";
  const std::string id = setting.substr((raises ? kRaise : kDrop).size());
  const MessageRow* row = registry_.Find(id);
  if (row == nullptr) return registry_.UnknownText(id);
  if (row->severity != Severity::kWarning) return id + " is no warning";
  overrides_[row] = raises ? Override::kRaise : Override::kDrop;
  return "";
}

Ruling Severities::RulingOn(const MessageRow& row, Severity severity) const {
  if (severity != Severity::kWarning) return {severity};
  const auto found = overrides_.find(&row);
  if (found != overrides_.end() && found->second == Override::kDrop) return {severity, false, true};
  if (!raises_all_ && found == overrides_.end()) return {severity};
  return {Severity::kError, true};
}

}  // namespace rux::diagnostics
