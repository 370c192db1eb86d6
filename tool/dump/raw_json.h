// The bytes of a file in the JSON form of a dump.
#ifndef TOOL_DUMP_RAW_JSON_H_
#define TOOL_DUMP_RAW_JSON_H_

#include <string_view>
#include <vector>

#include "tool/compiled/extent.h"
#include "tool/text/json_text.h"

namespace rux {

class RawJson {
 public:
  // `bytes` is the whole file; it must outlive this. Without `wanted`, nothing is written.
  RawJson(std::string_view bytes, bool wanted) : bytes_(bytes), wanted_(wanted) {}

  // Into the object that was opened last:
  // "raw": [{"field": name, "offset": number, "size": number, "bytes": hex}, ...]
  void Write(JsonWriter& json, const std::vector<Piece>& pieces) const;

 private:
  const std::string_view bytes_;
  const bool wanted_;
};

}  // namespace rux

#endif  // TOOL_DUMP_RAW_JSON_H_
