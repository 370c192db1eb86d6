#include "server/refactoring_actions.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/findings.h"
#include "assistance/edit.h"
#include "assistance/refactorings.h"
#include "findings/message_rows.h"
#include "protocol/json.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/finding_json.h"
#include "server/session.h"
#include "support/safe_text.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using assistance::Refactoring;
using protocol::Json;

const char* KindOf(Refactoring::Kind kind) {
  constexpr const char* kNames[] = {kQuickFix, kRewrite, kExtract};
  return kNames[static_cast<std::size_t>(kind)];
}

struct Candidate {
  OfferedAction action;
  bool is_local = true;  // changes only the file that was asked about
  std::size_t machines = 1;
};

// Nothing when it changes a file that is in no open folder.
std::optional<Candidate> CandidateOf(const Session& session, const Asked& asked,
                                     const Refactoring& refactoring) {
  Candidate candidate;
  Edits edits;
  for (const assistance::Edit& edit : refactoring.edits) {
    const analysis::File& file = asked.machine.FileAt(edit.at.file);
    if (!session.folders.MayChange(file.path)) return std::nullopt;
    candidate.is_local = candidate.is_local && edit.at.file == asked.at.file;
    const Json range = asked.machine.RangeOf(edit.at.file, edit.at.range);
    edits[UriOf(session, file)].Add(TextEditJson(range, edit.text));
  }
  candidate.action.json = {{"title", support::SafeText(refactoring.title)},
                           {"kind", KindOf(refactoring.kind)},
                           {"edit", WorkspaceEditJson(session, std::move(edits))}};
  if (refactoring.kind == Refactoring::Kind::kComplete) {
    candidate.action.mends = ruxcomp::findings::rows::kMissingEntry.id;
  }
  return candidate;
}

// In the order in which they were first found.
class Candidates {
 public:
  void AddOrCount(Candidate candidate) {
    const auto [same, is_new] = known_.try_emplace(candidate.action.json, all_.size());
    if (is_new) return all_.push_back(std::move(candidate));
    ++all_[same->second].machines;
  }

  std::vector<Candidate>& all() { return all_; }

 private:
  std::vector<Candidate> all_;
  std::map<Json, std::size_t> known_;
};

}  // namespace

std::vector<OfferedAction> RefactoringActions(const Session& session,
                                              const workspace::Document& document,
                                              protocol::Position position) {
  const std::vector<Asked> places = AskedAt(session, document, position);
  Candidates candidates;
  for (const Asked& asked : places) {
    for (const Refactoring& refactoring : assistance::RefactoringsAt(asked.at)) {
      std::optional<Candidate> candidate = CandidateOf(session, asked, refactoring);
      if (candidate) candidates.AddOrCount(std::move(*candidate));
    }
  }
  std::vector<OfferedAction> actions;
  for (Candidate& each : candidates.all()) {
    if (each.is_local && each.machines < places.size()) continue;
    actions.push_back(std::move(each.action));
  }
  return actions;
}

}  // namespace rux::server
