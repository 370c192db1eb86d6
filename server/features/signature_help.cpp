// textDocument/signatureHelp: the parts of the value that is being written.
#include <cstdint>
#include <optional>
#include <string>

#include "assistance/signature.h"
#include "protocol/json.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"

namespace rux::server {
namespace {

using assistance::Signature;
using protocol::Json;

// Where the parameter is in the label, or its text for clients that look for that.
Json LabelJson(const Session& session, const Signature& signature,
               const Signature::Parameter& parameter) {
  const bool has_offsets =
      session.client.can("textDocument", "signatureHelp", "signatureInformation",
                         "parameterInformation", "labelOffsetSupport");
  if (!has_offsets) return signature.label.substr(parameter.begin, parameter.end - parameter.begin);
  const protocol::TextLines lines(signature.label);
  const auto units = [&](std::uint32_t at) {
    return lines.PositionOf(at, protocol::Encoding::kUtf16).character;
  };
  return Json::array({units(parameter.begin), units(parameter.end)});
}

Json SignatureHelpOf(const Session& session, const Json& params) {
  for (const Asked& asked : AskedBy(session, params)) {
    const std::optional<Signature> signature = assistance::SignatureAt(asked.at);
    if (!signature) continue;
    Json parameters = Json::array();
    for (const Signature::Parameter& each : signature->parameters) {
      parameters.push_back({{"label", LabelJson(session, *signature, each)}});
    }
    const Json information = {{"label", signature->label}, {"parameters", parameters}};
    return {{"signatures", Json::array({information})},
            {"activeSignature", 0},
            {"activeParameter", signature->active}};
  }
  return nullptr;
}

}  // namespace

Feature SignatureHelp() {
  return {"signatureHelpProvider",
          {{"triggerCharacters", {"=", ","}}, {"retriggerCharacters", {","}}},
          {{"textDocument/signatureHelp", Timing::kWithMachines, SignatureHelpOf}}};
}

}  // namespace rux::server
