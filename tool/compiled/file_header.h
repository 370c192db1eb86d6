// What both forms of compiled files begin with.
#ifndef TOOL_COMPILED_FILE_HEADER_H_
#define TOOL_COMPILED_FILE_HEADER_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "tool/compiled/cursor.h"
#include "tool/compiled/extent.h"

namespace rux {

// Where the header of both forms ends.
inline constexpr std::size_t kHeaderEnd = 128;

// Magic, version, creation time, zeros. Fails with a Fault for another magic ("this is no" `form`)
// or version.
void DecodeHeader(Cursor& cursor, std::string_view magic, const char* form, std::uint32_t& version,
                  std::uint32_t& creation_time, std::vector<Piece>& pieces);

}  // namespace rux

#endif  // TOOL_COMPILED_FILE_HEADER_H_
