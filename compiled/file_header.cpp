#include "compiled/file_header.h"

namespace rux::compiled {
namespace {

constexpr std::size_t kVersionOffset = 16;
constexpr std::size_t kTimeEnd = kCreationTimeOffset + kWordSize;
constexpr std::uint32_t kVersion = 0x01000000;

std::string_view MagicOf(Form form) {
  using namespace std::string_view_literals;
  return form == Form::kMeta ? "MORV RUX meta.\0"sv : "MORV RUX metaD.\0"sv;
}

bool HasMagic(std::string_view bytes, Form form) {
  return bytes.substr(0, MagicOf(form).size()) == MagicOf(form);
}

}  // namespace

Form FormOf(std::string_view bytes) {
  if (HasMagic(bytes, Form::kMeta)) return Form::kMeta;
  return HasMagic(bytes, Form::kDebugMeta) ? Form::kDebugMeta : Form::kNone;
}

const char* FormName(Form form) {
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

FileHeader ReadFileHeader(Cursor& cursor, Form form, bool keeps_pieces) {
  FileHeader header;
  const Record record(cursor, "header", Record::kNoOrdinal,
                      keeps_pieces ? &header.pieces : nullptr);
  if (cursor.Bytes("magic", MagicOf(form).size()) != MagicOf(form)) {
    cursor.Fail("magic", 0, "this is no {}", FormName(form));
  }
  cursor.Zeros("gap", kVersionOffset - cursor.offset());
  header.version = cursor.Word("version");
  if (header.version != kVersion) {
    cursor.Fail("version", kVersionOffset, "it is 0x{:08X}, readable is 0x{:08X}", header.version,
                kVersion);
  }
  header.creation_time = cursor.Word("creation time");
  cursor.Zeros("gap", kHeaderEnd - cursor.offset());
  return header;
}

bool AreSameButForTime(std::string_view bytes, std::string_view other) {
  return FormOf(bytes) != Form::kNone && bytes.size() == other.size() && bytes.size() >= kTimeEnd &&
         bytes.substr(0, kCreationTimeOffset) == other.substr(0, kCreationTimeOffset) &&
         bytes.substr(kTimeEnd) == other.substr(kTimeEnd);
}

}  // namespace rux::compiled
