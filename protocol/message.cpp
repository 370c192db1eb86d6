#include "protocol/message.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "protocol/json.h"

namespace rux::protocol {
namespace {

constexpr const char* kVersion = "2.0";

// Messages of the protocol nest less than ten deep.
constexpr std::size_t kDeepest = 100;

// "\\ud83d"
constexpr std::size_t kEscapeSize = 6;

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

// The unit of UTF-16 that an escape at the place is, "\\ud83d"; 0: none.
unsigned EscapedUnit(std::string_view text, std::size_t at) {
  constexpr std::size_t kBeforeDigits = 2;
  if (text.substr(at, kBeforeDigits) != "\\u" || text.size() - at < kEscapeSize) return 0;
  const char* const digits = text.data() + at + kBeforeDigits;
  unsigned unit = 0;
  const auto [end, error] = std::from_chars(digits, text.data() + at + kEscapeSize, unit, 16);
  return error == std::errc() && end == text.data() + at + kEscapeSize ? unit : 0;
}

bool IsHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(unsigned unit) { return unit >= 0xDC00 && unit < 0xE000; }

// With U+FFFD for each half of a surrogate pair that is by itself. Editors that count in UTF-16
// send these when one types or deletes half of a character. As before, each is one unit.
std::string WithoutHalfPairs(std::string text) {
  for (std::size_t i = text.find('\\'); i < text.size(); i = text.find('\\', i)) {
    const unsigned unit = EscapedUnit(text, i);
    if (IsHighSurrogate(unit) && IsLowSurrogate(EscapedUnit(text, i + kEscapeSize))) {
      i += 2 * kEscapeSize;
      continue;
    }
    if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) text.replace(i, kEscapeSize, "\\ufffd");
    i += 2;  // the backslash and what it escapes
  }
  return text;
}

bool IsId(const Json& id) { return id.is_number_integer() || id.is_string(); }

RequestError Invalid(const char* text) { return {ErrorCode::kInvalidRequest, text}; }

}  // namespace

Message ParseMessage(std::string_view text, Json& id) {
  id = nullptr;
  if (IsTooDeep(text)) throw RequestError(ErrorCode::kParseError, "the message nests too deeply");
  Json json = Json::parse(text, nullptr, false);
  if (json.is_discarded()) json = Json::parse(WithoutHalfPairs(std::string(text)), nullptr, false);
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
