#include "server/asking.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/analysis.h"
#include "analysis/findings.h"
#include "analysis/reading.h"
#include "assistance/place.h"
#include "index/records.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/finding_json.h"
#include "server/session.h"
#include "support/folders.h"
#include "support/text_file.h"
#include "support/uri.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using protocol::Json;

// A place of a file in each of these machines that has it.
std::vector<Asked> AskedIn(const analysis::Analysis::Readings& machines,
                           const std::string& whole_name, protocol::Position position) {
  std::vector<Asked> places;
  for (const analysis::Reading* machine : machines) {
    const index::Id file = machine->NumberOf(whole_name);
    if (file == index::kNone) continue;
    places.push_back({*machine, {machine->index(), file, machine->OffsetOf(file, position)}});
  }
  return places;
}

// The same place in other machines that have the file.
void AddOthers(const Session& session, const Asked& asked, const assistance::Location& at,
               std::vector<Asked>& places) {
  const analysis::File& file = asked.machine.FileAt(at.file);
  const protocol::Position start = asked.machine.RangeOf(at.file, at.range).start;
  for (const Asked& other :
       AskedIn(session.analysis.FindReadingsOf(file), file.whole_name, start)) {
    places.push_back(other);
  }
}

}  // namespace

std::vector<Asked> AskedAt(const Session& session, const workspace::Document& document,
                           protocol::Position position) {
  return AskedIn(session.analysis.ReadingsOf(document), document.whole_name(), position);
}

std::vector<Asked> AskedInFile(const Session& session, const std::string& uri,
                               protocol::Position position) {
  if (const workspace::Document* document = session.documents.Find(uri)) {
    return AskedAt(session, *document, position);
  }
  const std::optional<std::string> path = support::PathOfUri(uri);
  if (!path) return {};
  const std::string whole_name = support::WholeName(*path);
  return AskedIn(session.analysis.FindReadingsOf({*path, whole_name}), whole_name, position);
}

std::vector<Asked> AskedBy(const Session& session, const Json& params) {
  const workspace::Document& document = session.DocumentOf(params);
  return AskedAt(session, document, protocol::Required<protocol::Position>(params, "position"));
}

std::vector<Asked> AskedAbout(const Session& session, const Json& params) {
  return AskedAt(session, session.DocumentOf(params), {});
}

void AskEverywhere(const Session& session, std::vector<Asked> asked,
                   const std::function<std::vector<assistance::Location>(const Asked&)>& ask) {
  std::set<const analysis::Reading*> machines;
  std::set<std::string> files;
  for (std::size_t i = 0; i < asked.size(); ++i) {
    const Asked next = asked[i];
    if (!machines.insert(&next.machine).second) continue;
    for (const assistance::Location& at : ask(next)) {
      const bool is_new = files.insert(next.machine.FileAt(at.file).whole_name).second;
      if (is_new) AddOthers(session, next, at, asked);
    }
  }
}

Json RangeJson(const Asked& asked, support::ByteRange range) {
  return asked.machine.RangeOf(asked.at.file, range);
}

Json LocationJson(const Session& session, const analysis::Reading& machine,
                  const assistance::Location& at) {
  return {{"uri", UriOf(session, machine.FileAt(at.file))},
          {"range", machine.RangeOf(at.file, at.range)}};
}

Json TextEditJson(const Json& range, const std::string& text) {
  return {{"range", range}, {"newText", text}};
}

// Clients that can compare versions do not apply edits of a text that has changed.
Json WorkspaceEditJson(const Session& session, Edits edits) {
  if (!session.client.can("workspace", "workspaceEdit", "documentChanges")) {
    Json changes = Json::object();
    for (auto& [uri, list] : edits) changes[uri] = list.Take();
    return {{"changes", changes}};
  }
  Json changes = Json::array();
  for (auto& [uri, list] : edits) {
    const workspace::Document* document = session.documents.Find(uri);
    const Json version = document == nullptr ? Json() : Json(document->version());
    changes.push_back(
        {{"textDocument", {{"uri", uri}, {"version", version}}}, {"edits", list.Take()}});
  }
  return {{"documentChanges", changes}};
}

}  // namespace rux::server
