// The layout of the meta file. All numbers are unsigned 32-bit little-endian words; bytes that the
// layout does not name are zero.
//
//      0  magic, zero-terminated            256  count of sections, then for each section
//     16  RUX_VERSION                            identifier, count of entries, then for each entry
//     20  creation time                            identifier, count of values, the values
//    128  directory: offsets of the table   then the table blocks, each at the next multiple of 16
//         blocks, ended by a zero word           that leaves padding: class, byte length, payload
#ifndef BACKEND_META_FORMAT_H_
#define BACKEND_META_FORMAT_H_

#include <cstddef>
#include <cstdint>

namespace meta_format {

inline constexpr char kMagic[] = "MORV RUX meta.";
inline constexpr std::size_t kMagicSize = 16;  // as read: the text, its terminating zero, a zero
inline constexpr std::size_t kVersionOffset = 16;
inline constexpr std::size_t kTimeOffset = 20;
inline constexpr std::size_t kDirectoryOffset = 128;
inline constexpr std::size_t kSectionsOffset = 256;
inline constexpr std::size_t kBlockAlignment = 16;
inline constexpr std::size_t kWordSize = 4;

static_assert(sizeof(kMagic) <= kMagicSize);

// Blocks never touch: there is padding also behind a block that ends on a boundary.
constexpr std::size_t NextBlock(std::size_t end) {
  return (end / kBlockAlignment + 1) * kBlockAlignment;
}

}  // namespace meta_format

#endif  // BACKEND_META_FORMAT_H_
