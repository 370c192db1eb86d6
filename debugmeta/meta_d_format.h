// The layout of the debug meta file. All numbers are unsigned 32-bit little-endian words.
//
//      0  magic, zero-terminated      128  count of defined words, then for each
//     16  RUXD_VERSION                       name length, name, value
//     20  creation time                    count of section kinds, then for each
//     24  zeros                              count of sections, then for each
//                                              record length, record (bytes.h)
#ifndef DEBUGMETA_META_D_FORMAT_H_
#define DEBUGMETA_META_D_FORMAT_H_

#include <cstddef>

namespace meta_d_format {

inline constexpr char kMagic[] = "MORV RUX metaD.";
inline constexpr std::size_t kVersionOffset = 16;
inline constexpr std::size_t kTimeOffset = 20;

static_assert(sizeof(kMagic) == kVersionOffset);

}  // namespace meta_d_format

#endif  // DEBUGMETA_META_D_FORMAT_H_
