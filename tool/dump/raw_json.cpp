#include "tool/dump/raw_json.h"

#include <fmt/format.h>

#include <string>

namespace rux {

void RawJson::Put(Json& object, const std::vector<Piece>& pieces) const {
  if (!wanted_) return;
  Json& raw = object["raw"] = Json::array();
  for (const Piece& piece : pieces) {
    std::string hex;
    for (const char byte : bytes_.substr(piece.extent.offset, piece.extent.size)) {
      hex += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    }
    raw.push_back({{"field", piece.name},
                   {"offset", piece.extent.offset},
                   {"size", piece.extent.size},
                   {"bytes", hex}});
  }
}

}  // namespace rux
