// callHierarchy: which sections and globals call an action, and which actions these call.
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "assistance/calls.h"
#include "assistance/place.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/records.h"
#include "protocol/json.h"
#include "protocol/params.h"
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

Json GlobalItem(const Session& session, const Asked& asked, Id global) {
  const index::Index& index = asked.at.index;
  const index::Definition& definition = index.definitions()[global];
  const index::Space& space = index.symbols()[definition.symbol].space;
  const std::string keyword = index.sections()[definition.section].kind->keyword;
  return {{"name", index.items()[definition.item].item->key},
          {"detail", "[" + keyword + "]"},
          {"kind", SymbolKindOf(space.section, space)},
          {"uri", UriOf(session, asked.machine.FileAt(definition.file))},
          {"range", asked.machine.RangeOf(definition.file, index.RangeOfItem(definition.item))},
          {"selectionRange", asked.machine.RangeOf(definition.file, definition.name)}};
}

Json SectionItem(const Session& session, const Asked& asked, Id section) {
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
  const auto range = protocol::Required<protocol::Range>(params, "item", "selectionRange");
  return AskedInFile(session, protocol::Required<std::string>(params, "item", "uri"), range.start);
}

Json PreparedCalls(const Session& session, const Json& params) {
  OnceList items;
  for (const Asked& asked : AskedBy(session, params)) {
    const Id action = assistance::ActionAt(asked.at);
    if (action != index::kNone) items.Add(SectionItem(session, asked, action));
  }
  Json list = items.Take();
  return list.empty() ? Json() : list;
}

// The sections with the places of their calls, which are in the file of `file`.
class CallList {
 public:
  CallList(const Session& session, const char* end) : session_(session), end_(end) {}

  void Add(const Asked& asked, const Calls& calls, Id file) {
    OnceList& ranges =
        ranges_[calls.global == index::kNone ? SectionItem(session_, asked, calls.section)
                                             : GlobalItem(session_, asked, calls.global)];
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
    for (const Calls& calls : assistance::CallsAt(asked.at)) {
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
