#include "inspect/raw_json.h"

#include <fmt/format.h>

#include <string>

namespace rux::inspect {

void RawJson::Write(support::JsonWriter& json, const std::vector<compiled::Piece>& pieces) const {
  if (!wanted_) return;
  json.Key("raw").Open('[');
  for (const compiled::Piece& piece : pieces) {
    std::string hex;
    for (const char byte : bytes_.substr(piece.extent.offset, piece.extent.size)) {
      hex += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    }
    json.Open('{').Key("field").String(piece.name);
    json.Key("offset").Number(piece.extent.offset).Key("size").Number(piece.extent.size);
    json.Key("bytes").String(hex).Close();
  }
  json.Close();
}

}  // namespace rux::inspect
