// A debug meta file as it is on disk: every record with its place.
//
// Decoded from the layout alone, without the library: the debug queries answer neither files
// and lines nor where something is in the file.
#ifndef COMPILED_DEBUG_META_H_
#define COMPILED_DEBUG_META_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/file.h"
#include "ruxcomp/file/fault.h"

namespace rux::compiled {

// One field of an entry's value: a text, or a list of texts.
struct DebugField {
  bool is_list = false;
  std::vector<std::string> texts;  // exactly one when it is not a list
  Extent extent;
  const char* name = "";  // Text, Type, Operand, BusType, Args, ...
};

// What sections and entries have in common.
struct DebugObject {
  std::uint32_t identifier = 0;  // 0x2000000N for a section, 0x10...... for an entry
  std::uint32_t notation = 0;
  std::uint32_t line = 0;
  std::uint32_t file_index = 0;  // into DebugMeta::files
  std::string name;              // section keyword or key; empty for an entry that was not given
  Extent extent;                 // of the whole record, after its length
  std::vector<Piece> pieces;     // all that the record is made of, its length first, without those
                                 // of the entries in a section
};

struct DebugEntry : DebugObject {
  // The identifier that the payload was made for; 0 when the script did not give the entry.
  std::uint32_t payload_type = 0;
  std::uint32_t number = 0;      // DWORD payload: the number
  std::uint32_t value_type = 0;  // VALUE payload: the type code
  // STRING: one text. STRINGLIST: one list. VALUE: the type's name, then the fields of its record.
  // REPEATER: count, action, list of arguments.
  std::vector<DebugField> fields;
  Extent payload_extent;
};

struct DebugSection : DebugObject {
  std::vector<DebugEntry> entries;  // entries that were not given included
};

struct DebugWord {
  std::string name;
  std::uint32_t value = 0;
  Extent extent;
  std::vector<Piece> pieces;
};

struct DebugMeta {
  std::uint32_t version = 0;
  std::uint32_t creation_time = 0;
  std::vector<std::string> files;  // source files, as the compile run named them
  Extent files_extent;             // size 0 when the file has no list
  std::vector<DebugWord> words;
  std::vector<std::vector<DebugSection>> kinds;  // in file order; INCLUDE sections included

  // What is between the records.
  std::vector<Piece> header;
  Extent word_count;
  Extent kind_count;
  std::vector<Extent> section_counts;  // one per kind
};

// For the bytes of a file. What is wrong with their layout goes to `faults`, and nothing is decoded
// then; what else must hold is for Verify() to check.
bool IsDebugMetaBytes(std::string_view bytes);
DebugMeta DecodeDebugMeta(std::string_view bytes, Faults& faults, Keep keep = Keep::kRecords);

// Throws a Failure when the bytes of that path are not those of a sound debug meta file.
DebugMeta SoundDebugMeta(const std::string& path, std::string_view bytes);

// The same for a file. Throws a Failure (trouble) when it is not a debug meta file, or a damaged
// one.
DebugMeta ReadDebugMeta(const std::string& path);

// Gives the first of the source files another path. The bytes are those of a sound debug meta file;
// one without a list of source files stays as it is.
void RenameScript(std::string& bytes, std::string_view path);

}  // namespace rux::compiled

#endif  // COMPILED_DEBUG_META_H_
