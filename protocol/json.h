// JSON as messages hold it.
#ifndef PROTOCOL_JSON_H_
#define PROTOCOL_JSON_H_

#include <nlohmann/json.hpp>
#include <string>

namespace rux::protocol {

using Json = nlohmann::json;

// Bytes that are no UTF-8 become U+FFFD.
inline std::string TextOf(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// The value at a path of members, null where one of them is missing.
template <class... Keys>
const Json& At(const Json& json, const char* key, const Keys&... keys) {
  static const Json none;
  if (!json.is_object()) return none;
  const auto found = json.find(key);
  if (found == json.end()) return none;
  if constexpr (sizeof...(keys) == 0) {
    return *found;
  } else {
    return At(*found, keys...);
  }
}

// Whether the value at the path is true.
template <class... Keys>
bool Has(const Json& json, const Keys&... keys) {
  const Json& value = At(json, keys...);
  return value.is_boolean() && value.get<bool>();
}

}  // namespace rux::protocol

#endif  // PROTOCOL_JSON_H_
