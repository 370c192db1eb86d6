// textDocument/completion: what may be written at a place. completionItem/resolve: what one of
// these is.
#include "assistance/completion.h"

#include <fmt/format.h>

#include <cstddef>
#include <set>
#include <string>
#include <utility>

#include "assistance/hover.h"
#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "support/text_file.h"

namespace rux::server {
namespace {

using assistance::Proposal;
using protocol::Json;

// Numbers of the protocol.
int CompletionKindOf(Proposal::Kind kind) {
  constexpr int kNumbers[] = {
      7,   // a section: Class
      10,  // a key: Property
      21,  // a word: Constant
      25,  // a type: TypeParameter
      18,  // a name: Reference
      12,  // an ID: Value
      6,   // a global: Variable
      5,   // a value of a section: Field
      6,   // an argument: Variable
      24,  // an operator: Operator
      17,  // a file: File
      19,  // a folder: Folder
  };
  return kNumbers[static_cast<std::size_t>(kind)];
}

constexpr int kSnippetFormat = 2;

// Editors sort by this text: the proposals keep their order.
std::string SortText(std::size_t number) { return fmt::format("{:05}", number); }

// What is replaced. Editors expect one line with the place in it.
Json ReplacedRange(const Asked& asked, support::ByteRange bytes) {
  const protocol::Range range = asked.machine.RangeOf(asked.at.file, bytes);
  if (range.start.line == range.end.line) return range;
  return RangeJson(asked, {asked.at.offset, asked.at.offset});
}

// Where its name is defined, by which its documentation is found later; null for all that has no
// name.
Json DataOf(const Session& session, const Asked& asked, const Proposal& proposal) {
  if (proposal.symbol == assistance::kNone) return nullptr;
  const index::Index& index = asked.at.index;
  const index::Definition& taken = index.definitions()[index.TakenDefinitionOf(proposal.symbol)];
  const Json at = LocationJson(session, asked.machine, assistance::LocationOf(taken));
  return {{"uri", at.at("uri")}, {"position", at.at("range").at("start")}};
}

Json ItemJson(const Session& session, const Proposal& proposal, const Json& range,
              std::size_t number) {
  const bool has_snippets =
      session.client.can("textDocument", "completion", "completionItem", "snippetSupport");
  const bool is_snippet = proposal.is_snippet && has_snippets;
  const std::string& text = proposal.is_snippet && !has_snippets ? proposal.label : proposal.text;
  Json item = {{"label", proposal.label},
               {"kind", CompletionKindOf(proposal.kind)},
               {"sortText", SortText(number)},
               {"textEdit", TextEditJson(range, text)}};
  if (!proposal.detail.empty()) item["detail"] = proposal.detail;
  if (is_snippet) item["insertTextFormat"] = kSnippetFormat;
  return item;
}

Json Completions(const Session& session, const Json& params) {
  Json items = Json::array();
  std::set<std::pair<std::string, std::string>> known;
  for (const Asked& asked : AskedBy(session, params)) {
    const assistance::Proposals found = assistance::ProposalsAt(asked.at);
    const Json range = ReplacedRange(asked, found.range);
    for (const Proposal& proposal : found.proposals) {
      if (!known.emplace(proposal.label, proposal.text).second) continue;
      items.push_back(ItemJson(session, proposal, range, items.size()));
      Json data = DataOf(session, asked, proposal);
      if (!data.is_null()) items.back()["data"] = std::move(data);
    }
  }
  return {{"isIncomplete", false}, {"items", items}};
}

// With what is shown of the name where it is defined, in the texts as they are now.
Json Resolved(const Session& session, const Json& params) {
  Json item = params;
  if (protocol::At(params, "data").is_null()) return item;
  const auto uri = protocol::Required<std::string>(params, "data", "uri");
  const auto position = protocol::Required<protocol::Position>(params, "data", "position");
  for (const Asked& asked : AskedInFile(session, uri, position)) {
    const auto hover = assistance::HoverAt(asked.at);
    if (!hover) continue;
    item["documentation"] = session.client.MarkupOf(hover->markdown, "textDocument", "completion",
                                                    "completionItem", "documentationFormat");
    break;
  }
  return item;
}

}  // namespace

Feature Completion() {
  return {"completionProvider",
          {{"resolveProvider", true}, {"triggerCharacters", {"[", "=", ",", " ", "\\", "/", "_"}}},
          {{"textDocument/completion", Timing::kWithMachines, Completions},
           {"completionItem/resolve", Timing::kWithMachines, Resolved}}};
}

}  // namespace rux::server
