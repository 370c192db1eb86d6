// textDocument/inlayHint: what a script does not say itself.
#include <vector>

#include "assistance/hints.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"

namespace rux::server {
namespace {

using protocol::Json;

constexpr int kParameter = 2;

Json HintJson(const Asked& asked, const assistance::Hint& hint) {
  const protocol::Range at = asked.machine.RangeOf(asked.at.file, {hint.offset, hint.offset});
  Json json = {{"position", at.start}, {"label", hint.text}};
  json[hint.is_before ? "paddingRight" : "paddingLeft"] = true;
  if (hint.is_before) json["kind"] = kParameter;
  return json;
}

Json HintsOf(const Session& session, const Json& params) {
  const auto range = protocol::Required<protocol::Range>(params, "range");
  Json hints = Json::array();
  const std::vector<Asked> places = AskedAbout(session, params);
  if (places.empty()) return hints;
  const Asked& asked = places.front();
  const auto offset = [&](protocol::Position at) {
    return asked.machine.OffsetOf(asked.at.file, at);
  };
  for (const assistance::Hint& hint : assistance::HintsIn(
           asked.at.index, asked.at.file, {offset(range.start), offset(range.end)})) {
    hints.push_back(HintJson(asked, hint));
  }
  return hints;
}

}  // namespace

Feature InlayHints() {
  return {"inlayHintProvider", true, {{"textDocument/inlayHint", Timing::kWithMachines, HintsOf}}};
}

}  // namespace rux::server
