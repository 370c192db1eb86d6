// What is known of a file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/analysis.h"
#include "analysis/findings.h"
#include "driver/common_findings.h"
#include "findings/message_row.h"
#include "workspace/documents.h"

namespace rux::analysis {

bool Analysis::IsMember(const workspace::Document* document, const std::string& machine) const {
  if (document == nullptr) return false;
  const auto members = members_.find(document->uri());
  return members != members_.end() && members->second.count(machine) != 0;
}

bool Analysis::IsUpToDate(const std::string& whole_name) const {
  const workspace::Document* document = documents_.FindFile(whole_name);
  if (document != nullptr && members_.count(document->uri()) == 0) return false;
  return std::none_of(machines_.begin(), machines_.end(), [&](const auto& each) {
    const auto& [name, state] = each;
    return state.is_under_way() && (state.NumberOf(whole_name) || IsMember(document, name));
  });
}

bool Analysis::IsAllUpToDate() const {
  return HasAllMachines() && std::none_of(machines_.begin(), machines_.end(), [](const auto& each) {
           return each.second.is_under_way();
         });
}

Analysis::Checked Analysis::checked() const {
  const auto known = std::count_if(machines_.begin(), machines_.end(),
                                   [](const auto& each) { return each.second.is_known; });
  return {static_cast<std::size_t>(known), machines_.size()};
}

std::vector<const Analysis::State*> Analysis::WithFile(const std::string& whole_name) const {
  std::vector<const State*> states;
  for (const auto& [name, state] : machines_) {
    if (state.NumberOf(whole_name)) states.push_back(&state);
  }
  return states;
}

std::vector<Analysis::Located> Analysis::FindingsIn(const std::string& whole_name) const {
  driver::CommonFindings<Located> common;
  bool has_all = true;
  for (const State* state : WithFile(whole_name)) {
    const MachineFindings& known = state->known;
    has_all = has_all && known.has_all;
    common.BeginMachine(known.main);
    for (const Finding& finding : known.findings) {
      if (known.files[finding.at.file].whole_name == whole_name) {
        common.Add(finding.key, {&finding, &known, {}});
      }
    }
  }
  std::vector<Located> located;
  for (auto& each : common.all()) {
    const bool is_in_all = common.IsInAll(each);
    const Finding& finding = *each.finding.finding;
    if (finding.is_about_unused && !is_in_all) continue;
    const bool is_note =
        finding.severity == static_cast<std::uint8_t>(ruxcomp::findings::Severity::kNote);
    if (!is_in_all && has_all && !is_note) each.finding.label = driver::FoundOnlyIn(each.mains);
    located.push_back(std::move(each.finding));
  }
  std::stable_sort(located.begin(), located.end(), [](const Located& a, const Located& b) {
    return a.finding->at.bytes.begin < b.finding->at.bytes.begin;
  });
  return located;
}

std::vector<Analysis::IncludedFile> Analysis::IncludesIn(const std::string& whole_name) const {
  std::vector<IncludedFile> includes;
  for (const State* state : WithFile(whole_name)) {
    const MachineFindings& known = state->known;
    for (const Include& include : known.includes) {
      if (known.files[include.at.file].whole_name != whole_name) continue;
      const auto is_same = [&](const IncludedFile& other) {
        return other.at->bytes.begin == include.at.bytes.begin;
      };
      if (std::any_of(includes.begin(), includes.end(), is_same)) continue;
      includes.push_back({&include.at, &known.files[include.file]});
    }
  }
  return includes;
}

std::set<std::string> Analysis::FailuresOf(const workspace::Document& document) const {
  std::set<std::string> failures;
  for (const auto& [name, state] : machines_) {
    if (IsMember(&document, name) && !state.known.failure.empty()) {
      failures.insert(state.known.failure);
    }
  }
  return failures;
}

std::set<std::string> Analysis::AllFiles() const {
  std::set<std::string> names;
  for (const auto& [uri, document] : documents_.all()) names.insert(document->whole_name());
  for (const auto& [name, state] : machines_) {
    for (const File& file : state.known.files) {
      if (file.is_read) names.insert(file.whole_name);
    }
  }
  return names;
}

const File* Analysis::FindFile(const std::string& whole_name) const {
  for (const auto& [name, state] : machines_) {
    if (const auto number = state.NumberOf(whole_name)) return &state.known.files[*number];
  }
  return nullptr;
}

}  // namespace rux::analysis
