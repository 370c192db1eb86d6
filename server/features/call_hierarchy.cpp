// callHierarchy: which sections call an action, and which actions a section calls.
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "assistance/calls.h"
#include "assistance/place.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "protocol/json.h"
#include "protocol/positions.h"
#include "ruxcomp/language/entries.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/finding_json.h"
#include "server/session.h"
#include "server/symbol_kinds.h"
#include "sources/source_file.h"
#include "support/text_file.h"

namespace rux::server {
namespace {

using assistance::Calls;
using assistance::Id;
using protocol::Json;

Json CallItem(const Session& session, const Asked& asked, Id section) {
  const index::Index& index = asked.at.index;
  const index::SectionRecord& record = index.sections()[section];
  const Id name = index.DefinitionIn(section, ruxcomp::language::ENTRY_NAME);
  const support::ByteRange selected =
      name == index::kNone ? index.files()[record.file]->RangeOf(record.section->header)
                           : index.definitions()[name].name;
  const std::string keyword = record.kind->keyword;
  const std::string title(assistance::NameOf(index, section));
  return {{"name", title.empty() ? keyword : title},
          {"detail", "[" + keyword + "]"},
          {"kind", SymbolKindOf(record.kind->source, {})},
          {"uri", UriOf(session, asked.machine.FileAt(record.file))},
          {"range", asked.machine.RangeOf(record.file, index.RangeOfSection(section))},
          {"selectionRange", asked.machine.RangeOf(record.file, selected)}};
}

// An item that was answered leads back to its place.
std::vector<Asked> AskedByItem(const Session& session, const Json& params) {
  const Json& item = params.at("item");
  const auto range = item.at("selectionRange").get<protocol::Range>();
  return AskedInFile(session, item.at("uri").get<std::string>(), range.start);
}

Json PreparedCalls(const Session& session, const Json& params) {
  OnceList items;
  for (const Asked& asked : AskedBy(session, params)) {
    const Id action = assistance::ActionAt(asked.at);
    if (action != index::kNone) items.Add(CallItem(session, asked, action));
  }
  Json list = items.Take();
  return list.empty() ? Json() : list;
}

// The sections with the places of their calls, which are in the file of `file`.
class CallList {
 public:
  CallList(const Session& session, const char* end) : session_(session), end_(end) {}

  void Add(const Asked& asked, const Calls& calls, Id file) {
    OnceList& ranges = ranges_[CallItem(session_, asked, calls.section)];
    for (const support::ByteRange& place : calls.places) {
      ranges.Add(asked.machine.RangeOf(file, place));
    }
  }

  Json Take() {
    Json list = Json::array();
    for (auto& [item, ranges] : ranges_) {
      list.push_back({{end_, item}, {"fromRanges", ranges.Take()}});
    }
    return list;
  }

 private:
  const Session& session_;
  const char* end_;  // "from" or "to"
  std::map<Json, OnceList> ranges_;
};

Json IncomingCalls(const Session& session, const Json& params) {
  CallList list(session, "from");
  for (const Asked& asked : AskedByItem(session, params)) {
    const Id action = assistance::ActionAt(asked.at);
    if (action == index::kNone) continue;
    for (const Calls& calls : assistance::CallersOf(asked.at.index, action)) {
      list.Add(asked, calls, asked.at.index.sections()[calls.section].file);
    }
  }
  return list.Take();
}

Json OutgoingCalls(const Session& session, const Json& params) {
  CallList list(session, "to");
  for (const Asked& asked : AskedByItem(session, params)) {
    const Id section = index::SpotAt(asked.at.index, asked.at.file, asked.at.offset).section;
    if (section == index::kNone) continue;
    for (const Calls& calls : assistance::CallsIn(asked.at.index, section)) {
      list.Add(asked, calls, asked.at.file);
    }
  }
  return list.Take();
}

}  // namespace

Feature CallHierarchy() {
  return {"callHierarchyProvider",
          true,
          {{"textDocument/prepareCallHierarchy", Timing::kWithMachines, PreparedCalls},
           {"callHierarchy/incomingCalls", Timing::kWithMachines, IncomingCalls},
           {"callHierarchy/outgoingCalls", Timing::kWithMachines, OutgoingCalls}}};
}

}  // namespace rux::server
