// The layouts of both compiled files. All numbers are unsigned 32-bit little-endian words; bytes
// that the layout does not name are zero. The meta file:
//
//      0  magic, zero-terminated            256  count of sections, then for each section
//     16  version                                identifier, count of entries, then for each entry
//     20  creation time                            identifier, count of values, the values
//    128  directory: offsets of the table   then the table blocks, each at the next multiple of 16
//         blocks, ended by a zero word           that leaves padding: class, byte length, payload
//
// The debug meta file has the same header with its own magic, and its data from offset 128 on:
// debugmeta/bytes.h says how records are packed.
#ifndef RUXCOMP_LANGUAGE_FILE_FORMAT_H_
#define RUXCOMP_LANGUAGE_FILE_FORMAT_H_

#include <cstddef>
#include <cstdint>

#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/words.h"

namespace ruxcomp::language::meta_format {

inline constexpr char kMagic[] = "MORV RUX meta.";
inline constexpr std::size_t kMagicSize = 16;  // as read: the text, its terminating zero, a zero
inline constexpr std::uint32_t kVersion = 0x01000000;
inline constexpr std::size_t kVersionOffset = 16;
inline constexpr std::size_t kTimeOffset = 20;
inline constexpr std::size_t kDirectoryOffset = 128;
inline constexpr std::size_t kSectionsOffset = 256;
inline constexpr std::size_t kBlockAlignment = 16;

// The two words that sections, entries and table blocks begin with.
inline constexpr std::size_t kRecordHeadSize = 2 * kWordSize;

static_assert(sizeof(kMagic) <= kMagicSize && kMagicSize == kVersionOffset);
static_assert(kDirectoryOffset + (kBlockCount + 1) * kWordSize <= kSectionsOffset,
              "the directory and its ending zero fit in front of the sections");

// Blocks never touch: there is padding also after a block that ends on a boundary.
constexpr std::size_t NextBlock(std::size_t end) {
  return (end / kBlockAlignment + 1) * kBlockAlignment;
}

}  // namespace ruxcomp::language::meta_format

namespace ruxcomp::language::debug_meta_format {

inline constexpr char kMagic[] = "MORV RUX metaD.";
inline constexpr std::uint32_t kVersion = 0x01000000;
inline constexpr std::size_t kVersionOffset = 16;
inline constexpr std::size_t kTimeOffset = 20;
inline constexpr std::size_t kDataOffset = 128;

static_assert(sizeof(kMagic) == kVersionOffset);

}  // namespace ruxcomp::language::debug_meta_format

#endif  // RUXCOMP_LANGUAGE_FILE_FORMAT_H_
