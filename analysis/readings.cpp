// Machines as their texts are.
#include <memory>
#include <string>
#include <vector>

#include "analysis/analysis.h"
#include "analysis/check.h"
#include "analysis/findings.h"
#include "analysis/reading.h"
#include "reader/texts.h"
#include "support/uri.h"
#include "workspace/documents.h"

namespace rux::analysis {

const Reading& Analysis::ReadingOf(const std::string& root, const std::string& script,
                                   const std::string& whole_name) const {
  std::unique_ptr<const Reading>& reading = readings_[whole_name];
  if (reading == nullptr) reading = std::make_unique<const Reading>(From(root), script);
  return *reading;
}

bool Analysis::HasMachinesOf(const workspace::Document& document) const {
  return members_.count(document.uri()) != 0;
}

Analysis::Readings Analysis::ReadingsOf(const workspace::Document& document) const {
  Readings readings;
  const auto members = members_.find(document.uri());
  if (members == members_.end()) return readings;
  for (const std::string& name : members->second) {
    const State& state = machines_.at(name);
    readings.push_back(&ReadingOf(state.root, state.script, name));
  }
  return readings;
}

Analysis::Readings Analysis::AllReadings() const {
  Readings readings;
  for (const auto& [name, state] : machines_) {
    readings.push_back(&ReadingOf(state.root, state.script, name));
  }
  return readings;
}

Analysis::Readings Analysis::FindReadingsOf(const File& file) const {
  const workspace::Document* open = documents_.FindFile(file.whole_name);
  if (open != nullptr && HasMachinesOf(*open)) return ReadingsOf(*open);
  const workspace::Document closed(support::UriOf(file.path), 0, "");
  const std::string root = folders_.RootOf(closed);
  return ReadingsOf(root, MachinesOf(From(root), closed));
}

Analysis::Readings Analysis::FindReadingsBelow(const File& file_or_folder) const {
  const std::string root = folders_.RootOf({support::UriOf(file_or_folder.path), 0, ""});
  return ReadingsOf(root, MachinesBelow(From(root), file_or_folder.whole_name));
}

Analysis::Readings Analysis::ReadingsOf(const std::string& root,
                                        const std::vector<Machine>& machines) const {
  Readings readings;
  for (const Machine& machine : machines) {
    readings.push_back(&ReadingOf(root, machine.script, machine.whole_name));
  }
  ruxcomp::reader::Texts::Clear();
  return readings;
}

}  // namespace rux::analysis
