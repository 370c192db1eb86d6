// The bytes of a file in the JSON form of a dump.
#ifndef INSPECT_RAW_JSON_H_
#define INSPECT_RAW_JSON_H_

#include <string_view>
#include <vector>

#include "compiled/file.h"
#include "support/json.h"

namespace rux::inspect {

class RawJson {
 public:
  // `bytes` is the whole file; it must outlive this. Without `wanted`, nothing is written.
  RawJson(std::string_view bytes, bool wanted) : bytes_(bytes), wanted_(wanted) {}

  // Adds to the object:
  // "raw": [{"field": name, "offset": number, "size": number, "bytes": hex}, ...]
  void Write(support::JsonObject& json, const std::vector<compiled::Piece>& pieces) const;

 private:
  const std::string_view bytes_;
  const bool wanted_;
};

}  // namespace rux::inspect

#endif  // INSPECT_RAW_JSON_H_
