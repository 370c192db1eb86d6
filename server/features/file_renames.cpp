// workspace/willRenameFiles: INCLUDE lines that follow files to their new names.
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "analysis/analysis.h"
#include "analysis/findings.h"
#include "analysis/reading.h"
#include "assistance/edit.h"
#include "assistance/moved_files.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/finding_json.h"
#include "server/session.h"
#include "support/folders.h"
#include "support/uri.h"

namespace rux::server {
namespace {

using protocol::Json;

// Files and folders, with their new paths.
using Moves = std::vector<std::pair<std::string, std::string>>;

Moves MovesOf(const Json& params) {
  Moves moves;
  for (const Json& file : protocol::RequiredMember(params, "files")) {
    const auto from = support::PathOfUri(protocol::Required<std::string>(file, "oldUri"));
    const auto to = support::PathOfUri(protocol::Required<std::string>(file, "newUri"));
    if (from && to) moves.emplace_back(*from, *to);
  }
  return moves;
}

// What is in a folder moves with it.
std::string PathAfter(const Moves& moves, const std::string& path) {
  for (const auto& [from, to] : moves) {
    if (support::IsBelow(path, from)) return to + path.substr(from.size());
  }
  return path;
}

void AddInclusions(const Session& session, const analysis::Reading& machine, const Moves& moves,
                   Edits& edits) {
  const auto new_path = [&](const std::string& path) { return PathAfter(moves, path); };
  for (const assistance::Edit& edit : assistance::EditsForMoves(machine.index(), new_path)) {
    const analysis::File& file = machine.FileAt(edit.at.file);
    if (!session.folders.MayChange(file.path)) continue;
    const Json range = machine.RangeOf(edit.at.file, edit.at.range);
    edits[UriOf(session, file)].Add(TextEditJson(range, edit.text));
  }
}

Json EditsForRenames(const Session& session, const Json& params) {
  const Moves moves = MovesOf(params);
  Edits edits;
  std::error_code ignored;
  const auto add = [&](const analysis::Analysis::Readings& machines) {
    for (const analysis::Reading* machine : machines) {
      AddInclusions(session, *machine, moves, edits);
    }
  };
  add(session.analysis.AllReadings());
  for (const auto& [from, to] : moves) {
    const analysis::File file{from, support::WholeName(from), true};
    if (!std::filesystem::is_directory(from, ignored)) add(session.analysis.FindReadingsOf(file));
    add(session.analysis.FindReadingsBelow(file));
  }
  return edits.empty() ? Json() : WorkspaceEditJson(session, std::move(edits));
}

}  // namespace

Feature FileRenames() {
  const Json scripts = {{"scheme", "file"},
                        {"pattern", {{"glob", "**/*.rux"}, {"matches", "file"}}}};
  const Json folders = {{"scheme", "file"}, {"pattern", {{"glob", "**/*"}, {"matches", "folder"}}}};
  return {"workspace/fileOperations",
          {{"willRename", {{"filters", {scripts, folders}}}}},
          {{"workspace/willRenameFiles", Timing::kWithMachines, EditsForRenames}}};
}

}  // namespace rux::server
