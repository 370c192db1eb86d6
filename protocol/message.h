// Requests, answers and notifications of JSON-RPC 2.0.
#ifndef PROTOCOL_MESSAGE_H_
#define PROTOCOL_MESSAGE_H_

#include <stdexcept>
#include <string>
#include <string_view>

#include "protocol/json.h"

namespace rux::protocol {

enum class ErrorCode {
  kParseError = -32700,
  kInvalidRequest = -32600,
  kMethodNotFound = -32601,
  kInvalidParams = -32602,
  kInternalError = -32603,
  kServerNotInitialized = -32002,
  kRequestFailed = -32803,
  kRequestCancelled = -32800,
};

// What a request is answered with instead of a result.
class RequestError : public std::runtime_error {
 public:
  RequestError(ErrorCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
  ErrorCode code() const { return code_; }

 private:
  ErrorCode code_;
};

struct Message {
  enum class Kind { kRequest, kNotification, kAnswer };

  Kind kind = Kind::kNotification;
  Json id;  // null: none
  std::string method;
  Json params;              // null: none
  bool is_refusal = false;  // an answer that has an error for a result
};

// Throws a RequestError; `id` is then that of the message, where it has one.
Message ParseMessage(std::string_view text, Json& id);

// As they are sent, without a header.
std::string Answer(const Json& id, const Json& result);
std::string ErrorAnswer(const Json& id, ErrorCode code, const std::string& text);
std::string Notification(const char* method, const Json& params);
// Null parameters are none.
std::string Request(const Json& id, const char* method, const Json& params);

}  // namespace rux::protocol

#endif  // PROTOCOL_MESSAGE_H_
