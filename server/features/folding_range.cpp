// textDocument/foldingRange: the lines that an editor can hide.
#include <cstdint>
#include <utility>
#include <vector>

#include "assistance/folding.h"
#include "protocol/json.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "sources/source_file.h"

namespace rux::server {
namespace {

using protocol::Json;

// A line of the client's, which ends lines in one more way.
Json LineJson(const Asked& asked, std::uint32_t line) {
  const std::uint32_t start = asked.at.index.files()[asked.at.file]->LineStart(line);
  return asked.machine.RangeOf(asked.at.file, {start, start}).start.line;
}

Json FoldsOf(const Session& session, const Json& params) {
  Json folds = Json::array();
  const std::vector<Asked> places = AskedAbout(session, params);
  if (places.empty()) return folds;
  const Asked& asked = places.front();
  for (const assistance::Fold& fold : assistance::FoldsOf(asked.at.index, asked.at.file)) {
    Json json = {{"startLine", LineJson(asked, fold.first_line)},
                 {"endLine", LineJson(asked, fold.last_line)}};
    if (fold.kind == assistance::Fold::Kind::kComment) json["kind"] = "comment";
    folds.push_back(std::move(json));
  }
  return folds;
}

}  // namespace

Feature FoldingRanges() {
  return {"foldingRangeProvider",
          true,
          {{"textDocument/foldingRange", Timing::kWithMachines, FoldsOf}}};
}

}  // namespace rux::server
