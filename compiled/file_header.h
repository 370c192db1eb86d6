// What both forms of compiled files begin with.
#ifndef COMPILED_FILE_HEADER_H_
#define COMPILED_FILE_HEADER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/cursor.h"
#include "compiled/extent.h"

namespace rux::compiled {

enum class Form { kNone, kMeta, kDebugMeta };

// By the magic.
Form FormOf(std::string_view bytes);

// "meta file", "debug meta file", "file".
const char* FormName(Form form);

// Where it ends, in bytes.
inline constexpr std::size_t kHeaderEnd = 128;

struct FileHeader {
  std::uint32_t version = 0;
  std::uint32_t creation_time = 0;
  std::vector<Piece> pieces;
};

// Magic, version, creation time, zeros. Fails with a Fault for another magic or version.
FileHeader ReadFileHeader(Cursor& cursor, Form form, bool keeps_pieces);

// Where the creation time stands, which is a word.
inline constexpr std::size_t kCreationTimeOffset = 20;

// Whether these are compiled files that tell the same apart from when they were created.
bool AreSameButForTime(std::string_view bytes, std::string_view other);

}  // namespace rux::compiled

#endif  // COMPILED_FILE_HEADER_H_
