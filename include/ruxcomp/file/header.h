// What both forms of compiled files begin with.
#ifndef RUXCOMP_FILE_HEADER_H_
#define RUXCOMP_FILE_HEADER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/language/file_format.h"

namespace ruxcomp::file {

enum class Form { kNone, kMeta, kDebugMeta };

// No compiled file has more.
inline constexpr std::size_t kMostFileBytes = std::size_t{256} << 20;

// Both forms have the same version and header but for the magic.
inline constexpr std::uint32_t kVersion = language::meta_format::kVersion;
inline constexpr std::size_t kVersionOffset = language::meta_format::kVersionOffset;
inline constexpr std::size_t kTimeOffset = language::meta_format::kTimeOffset;
inline constexpr std::size_t kHeaderEnd = language::meta_format::kDirectoryOffset;
static_assert(kVersion == language::debug_meta_format::kVersion &&
              kVersionOffset == language::debug_meta_format::kVersionOffset &&
              kTimeOffset == language::debug_meta_format::kTimeOffset &&
              kHeaderEnd == language::debug_meta_format::kDataOffset);

// With the zero that ends it.
constexpr std::string_view MagicOf(Form form) {
  if (form == Form::kMeta) {
    return {language::meta_format::kMagic, sizeof language::meta_format::kMagic};
  }
  return {language::debug_meta_format::kMagic, sizeof language::debug_meta_format::kMagic};
}

// By the magic.
constexpr Form FormOf(std::string_view bytes) {
  for (const Form form : {Form::kMeta, Form::kDebugMeta}) {
    if (bytes.substr(0, MagicOf(form).size()) == MagicOf(form)) return form;
  }
  return Form::kNone;
}

constexpr const char* FormName(Form form) {
  switch (form) {
    case Form::kNone:
      break;
    case Form::kMeta:
      return "meta file";
    case Form::kDebugMeta:
      return "debug meta file";
  }
  return "file";
}

struct FileHeader {
  std::uint32_t version = 0;
  std::uint32_t creation_time = 0;
  std::vector<Piece> pieces;
};

// Magic, version, creation time, zeros. Fails for another magic or version.
inline FileHeader ReadFileHeader(Cursor& cursor, Form form, bool keeps_pieces) {
  FileHeader header;
  const Record record(cursor, "header", Record::kNoOrdinal,
                      keeps_pieces ? &header.pieces : nullptr);
  if (cursor.Bytes("magic", MagicOf(form).size()) != MagicOf(form)) {
    cursor.Fail("magic", 0, "this is not a {}", FormName(form));
  }
  if (cursor.ok()) cursor.Zeros("gap", kVersionOffset - cursor.offset());
  header.version = cursor.Word("version");
  if (header.version != kVersion) {
    cursor.Fail("version", kVersionOffset, "expected 0x{1:08X}, found 0x{0:08X}", header.version,
                kVersion);
  }
  header.creation_time = cursor.Word("creation time");
  if (cursor.ok()) cursor.Zeros("gap", kHeaderEnd - cursor.offset());
  return cursor.ok() ? header : FileHeader();
}

// Whether these are compiled files that say the same apart from when they were created.
inline bool AreSameButForTime(std::string_view bytes, std::string_view other) {
  constexpr std::size_t kTimeEnd = kTimeOffset + kWordSize;
  return FormOf(bytes) != Form::kNone && bytes.size() == other.size() && bytes.size() >= kTimeEnd &&
         bytes.substr(0, kTimeOffset) == other.substr(0, kTimeOffset) &&
         bytes.substr(kTimeEnd) == other.substr(kTimeEnd);
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_HEADER_H_
