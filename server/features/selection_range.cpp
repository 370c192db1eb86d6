// textDocument/selectionRange: what is selected as a selection grows.
#include <utility>
#include <vector>

#include "assistance/selection.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using protocol::Json;

Json SelectionOf(const Session& session, const workspace::Document& document,
                 protocol::Position position) {
  // In an empty text, and for what is no machine's, the place itself.
  const support::ByteRange bytes = document.lines().BytesOf({position, position}, session.encoding);
  Json selection = {{"range", document.lines().RangeOf(bytes, session.encoding)}};
  const std::vector<Asked> places = AskedAt(session, document, position);
  if (places.empty()) return selection;
  std::vector<support::ByteRange> ranges = assistance::SelectionsAt(places.front().at);
  Json outer;
  for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
    Json inner = {{"range", RangeJson(places.front(), *range)}};
    if (!outer.is_null()) inner["parent"] = std::move(outer);
    outer = std::move(inner);
  }
  return outer.is_null() ? selection : outer;
}

Json SelectionsOf(const Session& session, const Json& params) {
  const workspace::Document& document = session.DocumentOf(params);
  Json selections = Json::array();
  for (const protocol::Position position :
       protocol::Required<std::vector<protocol::Position>>(params, "positions")) {
    selections.push_back(SelectionOf(session, document, position));
  }
  return selections;
}

}  // namespace

Feature SelectionRanges() {
  return {"selectionRangeProvider",
          true,
          {{"textDocument/selectionRange", Timing::kWithMachines, SelectionsOf}}};
}

}  // namespace rux::server
