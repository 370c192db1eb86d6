#include "protocol/message.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "protocol/json.h"

namespace rux::protocol {
namespace {

constexpr const char* kVersion = "2.0";

// Messages of the protocol nest less than ten deep.
constexpr std::size_t kDeepest = 100;

// Before it is parsed: what follows the parser may recurse.
bool IsTooDeep(std::string_view text) {
  std::size_t depth = 0;
  bool is_in_string = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (is_in_string && c == '\\') {
      ++i;
    } else if (c == '"') {
      is_in_string = !is_in_string;
    } else if (!is_in_string && (c == '{' || c == '[')) {
      if (++depth > kDeepest) return true;
    } else if (!is_in_string && (c == '}' || c == ']')) {
      depth -= std::min<std::size_t>(depth, 1);
    }
  }
  return false;
}

bool IsId(const Json& id) { return id.is_number_integer() || id.is_string(); }

RequestError Invalid(const char* text) { return {ErrorCode::kInvalidRequest, text}; }

}  // namespace

Message ParseMessage(std::string_view text, Json& id) {
  id = nullptr;
  if (IsTooDeep(text)) throw RequestError(ErrorCode::kParseError, "the message nests too deeply");
  Json json = Json::parse(text, nullptr, false);
  if (json.is_discarded()) throw RequestError(ErrorCode::kParseError, "the message is not JSON");
  if (IsId(At(json, "id"))) id = json["id"];
  if (At(json, "jsonrpc") != kVersion) throw Invalid("the message is not JSON-RPC 2.0");
  Message message;
  message.id = id;
  const Json& method = At(json, "method");
  if (method.is_null() && (json.contains("result") || json.contains("error"))) {
    message.kind = Message::Kind::kAnswer;
    message.is_refusal = json.contains("error");
    return message;
  }
  if (!method.is_string()) throw Invalid("the message has no method");
  if (json.contains("id") && id.is_null()) throw Invalid("the id is neither a number nor a text");
  message.method = method.get<std::string>();
  if (json.contains("params")) message.params = std::move(json["params"]);
  if (!id.is_null()) message.kind = Message::Kind::kRequest;
  return message;
}

std::string Answer(const Json& id, const Json& result) {
  return TextOf({{"jsonrpc", kVersion}, {"id", id}, {"result", result}});
}

std::string ErrorAnswer(const Json& id, ErrorCode code, const std::string& text) {
  return TextOf({{"jsonrpc", kVersion},
                 {"id", id},
                 {"error", {{"code", static_cast<int>(code)}, {"message", text}}}});
}

std::string Notification(const char* method, const Json& params) {
  return TextOf({{"jsonrpc", kVersion}, {"method", method}, {"params", params}});
}

std::string Request(const Json& id, const char* method, const Json& params) {
  Json request = {{"jsonrpc", kVersion}, {"id", id}, {"method", method}};
  if (!params.is_null()) request["params"] = params;
  return TextOf(request);
}

}  // namespace rux::protocol
