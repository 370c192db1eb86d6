#include "analysis/analysis.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "analysis/check.h"
#include "analysis/child.h"
#include "analysis/findings.h"
#include "analysis/wire.h"
#include "driver/compile_options.h"
#include "workspace/documents.h"
#include "workspace/folders.h"

namespace rux::analysis {
namespace {

using Clock = std::chrono::steady_clock;

// The answer of a process that has ended. Sets the trouble when there is none.
template <class Record>
Record AnswerOf(Child& child, std::string& trouble) {
  trouble = child.Trouble();
  if (!trouble.empty()) return {};
  try {
    return FromBytes<Record>(child.answer());
  } catch (const std::runtime_error& error) {
    trouble = error.what();
    return {};
  }
}

}  // namespace

Analysis::Analysis(driver::CompileOptions settings, const workspace::Documents& documents,
                   const workspace::Folders& folders)
    : settings_(std::move(settings)), documents_(documents), folders_(folders) {}

std::optional<std::size_t> Analysis::State::NumberOf(const std::string& whole_name) const {
  const std::vector<File>& files = known.files;
  const auto found = std::find_if(files.begin(), files.end(),
                                  [&](const File& file) { return file.whole_name == whole_name; });
  if (found == files.end()) return std::nullopt;
  return static_cast<std::size_t>(found - files.begin());
}

void Analysis::SetDue(State& state) {
  state.child.reset();
  state.is_due = true;
  state.changed = changes_;
}

// A machine whose files are not known may have that one.
void Analysis::TextChanged(const std::string& whole_name) {
  ++changes_;
  readings_.clear();
  changed_.insert(whole_name);
  search_.reset();
  for (auto& [name, state] : machines_) {
    if (state.known.files.empty() || state.NumberOf(whole_name)) SetDue(state);
  }
}

void Analysis::OpenedOrClosing(const workspace::Document& document) {
  members_.erase(document.uri());
  if (!document.is_saved()) ForgetMembers();
  TextChanged(document.whole_name());
}

void Analysis::AllChanged() {
  ForgetMembers();
  readings_.clear();
  ++changes_;
  for (auto& [name, state] : machines_) SetDue(state);
}

// Machines are checked from other folders.
void Analysis::FoldersChanged() {
  for (const auto& [name, state] : machines_) NoteFiles(state);
  machines_.clear();
  readings_.clear();
  ForgetMembers();
}

// Another text may make documents parts of other machines.
void Analysis::ForgetMembers() {
  members_.clear();
  search_.reset();
}

std::size_t Analysis::RunningCount() const {
  const auto checks = std::count_if(machines_.begin(), machines_.end(),
                                    [](const auto& each) { return each.second.child != nullptr; });
  return static_cast<std::size_t>(checks) + (search_ != nullptr ? 1 : 0);
}

void Analysis::Start() {
  const std::size_t most = std::max(std::thread::hardware_concurrency(), 1U);
  StartSearch();
  while (RunningCount() < most) {
    State* next = nullptr;
    for (auto& [name, state] : machines_) {
      if (state.is_due && (next == nullptr || state.changed > next->changed)) next = &state;
    }
    if (next == nullptr) return;
    StartCheck(*next);
  }
}

void Analysis::StartSearch() {
  if (search_ != nullptr) return;
  searched_.clear();
  for (const auto& [uri, document] : documents_.all()) {
    if (members_.count(uri) == 0) searched_.push_back(uri);
  }
  if (searched_.empty()) {
    DropUnused();
    return;
  }
  search_ = std::make_unique<Child>([this] {
    std::vector<std::vector<Machine>> machines;
    for (const std::string& uri : searched_) {
      const workspace::Document& document = *documents_.Find(uri);
      machines.push_back(MachinesOf(From(folders_.RootOf(document)), document));
    }
    return ToBytes(std::move(machines));
  });
}

void Analysis::EndSearch() {
  std::string trouble;
  auto found = AnswerOf<std::vector<std::vector<Machine>>>(*search_, trouble);
  search_.reset();
  found.resize(searched_.size());
  for (std::size_t i = 0; i < searched_.size(); ++i) {
    const workspace::Document* document = documents_.Find(searched_[i]);
    if (document == nullptr) continue;
    const std::string root = folders_.RootOf(*document);
    if (found[i].empty()) {
      found[i] = {{workspace::PathFrom(root, document->path()), document->whole_name()}};
    }
    Members& members = members_[searched_[i]];
    for (const Machine& machine : found[i]) {
      members.insert(machine.whole_name);
      const auto [place, is_new] = machines_.try_emplace(machine.whole_name);
      if (!is_new) continue;
      place->second.root = root;
      place->second.script = machine.script;
      place->second.changed = changes_;
    }
    changed_.insert(document->whole_name());
  }
  DropUnused();
}

// A machine of which no document is a part any more.
void Analysis::DropUnused() {
  for (auto each = machines_.begin(); each != machines_.end();) {
    const std::string& machine = each->first;
    const bool is_used = std::any_of(members_.begin(), members_.end(),
                                     [&](const auto& of) { return of.second.count(machine) != 0; });
    if (!is_used) NoteFiles(each->second);
    each = is_used ? std::next(each) : machines_.erase(each);
  }
}

void Analysis::NoteFiles(const State& state) {
  for (const File& file : state.known.files) changed_.insert(file.whole_name);
}

void Analysis::StartCheck(State& state) {
  state.is_due = false;
  state.child = std::make_unique<Child>(
      [&] { return ToBytes(CheckMachine(From(state.root), state.script)); });
}

void Analysis::EndCheck(const std::string& machine, State& state) {
  std::string trouble;
  auto found = AnswerOf<MachineFindings>(*state.child, trouble);
  state.child.reset();
  if (!trouble.empty()) found.failure = "cannot check " + state.script + ": " + trouble;
  if (found.main.empty()) found.main = state.script;
  const bool has_other_shape = state.is_known && found.shape != state.known.shape;
  NoteFiles(state);
  state.known = std::move(found);
  state.is_known = true;
  NoteFiles(state);
  for (const auto& [uri, document] : documents_.all()) {
    if (IsMember(document.get(), machine)) changed_.insert(document->whole_name());
  }
  if (has_other_shape) ForgetMembers();
}

void Analysis::Collect() {
  if (search_ != nullptr && search_->Read()) EndSearch();
  for (auto& [name, state] : machines_) {
    if (state.child != nullptr && state.child->Read()) EndCheck(name, state);
  }
}

std::vector<int> Analysis::descriptors() const {
  std::vector<int> descriptors;
  if (search_ != nullptr) descriptors.push_back(search_->descriptor());
  for (const auto& [name, state] : machines_) {
    if (state.child != nullptr) descriptors.push_back(state.child->descriptor());
  }
  return descriptors;
}

std::optional<std::chrono::milliseconds> Analysis::timeout() const {
  std::optional<Clock::time_point> first;
  const auto add = [&](const Child* child) {
    if (child != nullptr) first = std::min(first.value_or(child->deadline()), child->deadline());
  };
  add(search_.get());
  for (const auto& [name, state] : machines_) add(state.child.get());
  if (!first) return std::nullopt;
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(*first - Clock::now());
  return std::max(left, std::chrono::milliseconds(0)) + std::chrono::milliseconds(1);
}

std::set<std::string> Analysis::TakeChanged() {
  std::set<std::string> ready;
  for (auto each = changed_.begin(); each != changed_.end();) {
    const bool is_ready = IsUpToDate(*each);
    if (is_ready) ready.insert(*each);
    each = is_ready ? changed_.erase(each) : std::next(each);
  }
  return ready;
}

}  // namespace rux::analysis
