#include "tool/compiled/file_header.h"

#include <fmt/format.h>

#include <string>

namespace rux {
namespace {

constexpr std::size_t kVersionOffset = 16;
constexpr std::uint32_t kVersion = 0x01000000;

}  // namespace

void DecodeHeader(Cursor& cursor, std::string_view magic, const char* form, std::uint32_t& version,
                  std::uint32_t& creation_time, std::vector<Piece>& pieces) {
  const Record record(cursor, "header", Record::kNoOrdinal, &pieces);
  if (cursor.Bytes("magic", magic.size()) != magic) {
    cursor.Fail("magic", 0, std::string("this is no ") + form);
  }
  cursor.Zeros("gap", kVersionOffset - cursor.offset());
  version = cursor.Word("version");
  if (version != kVersion) {
    cursor.Fail("version", kVersionOffset,
                fmt::format("it is 0x{:08X}, readable is 0x{:08X}", version, kVersion));
  }
  creation_time = cursor.Word("creation time");
  cursor.Zeros("gap", kHeaderEnd - cursor.offset());
}

}  // namespace rux
