// The layout of the debug meta file. All numbers are unsigned 32-bit little-endian words.
//
//      0  magic, zero-terminated      128  count of defined words, then for each
//     16  version                            name length, name, value
//     20  creation time                    count of section kinds, then for each
//     24  zeros                              count of sections, then for each
//                                              record length, record
#ifndef RUXCOMP_LANGUAGE_DEBUG_META_FORMAT_H_
#define RUXCOMP_LANGUAGE_DEBUG_META_FORMAT_H_

#include <cstddef>
#include <cstdint>

namespace ruxcomp::language::debug_meta_format {

inline constexpr char kMagic[] = "MORV RUX metaD.";
inline constexpr std::uint32_t kVersion = 0x01000000;
inline constexpr std::size_t kVersionOffset = 16;
inline constexpr std::size_t kTimeOffset = 20;
inline constexpr std::size_t kDataOffset = 128;

static_assert(sizeof(kMagic) == kVersionOffset);

}  // namespace ruxcomp::language::debug_meta_format

#endif  // RUXCOMP_LANGUAGE_DEBUG_META_FORMAT_H_
