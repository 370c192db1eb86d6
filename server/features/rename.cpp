// textDocument/rename: a name changed wherever it is written, in all machines that have it.
#include "assistance/rename.h"

#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

#include "analysis/findings.h"
#include "assistance/edit.h"
#include "assistance/place.h"
#include "protocol/json.h"
#include "protocol/message.h"
#include "protocol/params.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/finding_json.h"
#include "server/session.h"
#include "support/safe_text.h"

namespace rux::server {
namespace {

using protocol::Json;

void RefuseIf(const std::string& refusal) {
  if (refusal.empty()) return;
  throw protocol::RequestError(protocol::ErrorCode::kRequestFailed, support::SafeText(refusal));
}

Json RenamableOf(const Session& session, const Json& params) {
  const std::vector<Asked> places = AskedBy(session, params);
  if (places.empty()) return nullptr;
  for (const Asked& asked : places) RefuseIf(assistance::RenamableAt(asked.at).refusal);
  const assistance::Renamable found = assistance::RenamableAt(places.front().at);
  return {{"range", RangeJson(places.front(), found.range)}, {"placeholder", found.name}};
}

std::vector<assistance::Location> AddEdits(const Session& session, const Asked& asked,
                                           const std::string& name, Edits& edits) {
  const assistance::Renaming renaming = assistance::Rename(asked.at, name);
  RefuseIf(renaming.refusal);
  std::vector<assistance::Location> places;
  for (const assistance::Edit& edit : renaming.edits) {
    const analysis::File& file = asked.machine.FileAt(edit.at.file);
    if (!session.folders.MayChange(file.path)) {
      RefuseIf(fmt::format("{} is outside the folders that are open", file.path));
    }
    const Json range = asked.machine.RangeOf(edit.at.file, edit.at.range);
    edits[UriOf(session, file)].Add(TextEditJson(range, edit.text));
    places.push_back(edit.at);
  }
  return places;
}

Json RenamingOf(const Session& session, const Json& params) {
  const auto name = protocol::Required<std::string>(params, "newName");
  const std::vector<Asked> places = AskedBy(session, params);
  if (places.empty()) return nullptr;
  Edits edits;
  AskEverywhere(session, places,
                [&](const Asked& asked) { return AddEdits(session, asked, name, edits); });
  return WorkspaceEditJson(session, std::move(edits));
}

}  // namespace

Feature Renaming() {
  return {"renameProvider",
          {{"prepareProvider", true}},
          {{"textDocument/prepareRename", Timing::kWithMachines, RenamableOf},
           {"textDocument/rename", Timing::kWithMachines, RenamingOf}}};
}

}  // namespace rux::server
