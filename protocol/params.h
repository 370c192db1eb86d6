// The members that a message must have.
#ifndef PROTOCOL_PARAMS_H_
#define PROTOCOL_PARAMS_H_

#include <string>

#include "protocol/json.h"
#include "protocol/message.h"

namespace rux::protocol {

inline void ExtendPath(std::string& path, const char* key) {
  if (!path.empty()) path += '.';
  path += key;
}

// The value at a path of members. Throws a RequestError that names the first one that is missing:
// "textDocument.uri is missing".
template <class... Keys>
const Json& RequiredMember(const Json& json, const Keys*... keys) {
  const Json* value = &json;
  std::string path;
  for (const char* key : {keys...}) {
    ExtendPath(path, key);
    value = &At(*value, key);
    if (value->is_null()) throw RequestError(ErrorCode::kInvalidParams, path + " is missing");
  }
  return *value;
}

// The same for what is a Value. Throws a RequestError for anything else, too.
template <class Value, class... Keys>
Value Required(const Json& json, const Keys*... keys) {
  const Json& value = RequiredMember(json, keys...);
  try {
    return value.get<Value>();
  } catch (const Json::exception&) {
    std::string path;
    for (const char* key : {keys...}) ExtendPath(path, key);
    throw RequestError(ErrorCode::kInvalidParams, path + " is malformed");
  }
}

}  // namespace rux::protocol

#endif  // PROTOCOL_PARAMS_H_
