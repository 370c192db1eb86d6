#include "inspect/raw_json.h"

#include <vector>

#include "ruxcomp/file/views.h"
#include "support/json.h"
#include "support/safe_text.h"

namespace rux::inspect {

void RawJson::Write(support::JsonObject& json, const std::vector<compiled::Piece>& pieces) const {
  if (!wanted_) return;
  json.Objects("raw", pieces, [&](support::JsonObject& raw, const compiled::Piece& piece) {
    raw.Member("field", piece.name);
    raw.Member("offset", piece.extent.offset);
    raw.Member("size", piece.extent.size);
    raw.Member("bytes", support::Hex(bytes_.substr(piece.extent.offset, piece.extent.size)));
  });
}

}  // namespace rux::inspect
