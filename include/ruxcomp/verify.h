// Whether the bytes of a meta file are sound: what `rux verify` checks, for hosts. Header-only; the
// library need not be linked.
//
//   if (const std::optional<ruxcomp::Fault> fault = ruxcomp::Verify(bytes)) {
//     std::fprintf(stderr, "board.meta: %s\n", ruxcomp::FaultText(*fault).c_str());
//     return false;  // board.meta: offset 0x2F0, table 3, class: expected 0x06000000, found ...
//   }
//
// A file is sound when the compiler can have written it for a script that passed its checks:
// header, directory and every block have their places and sizes, every section its required
// entries, every entry as many values as its type has, and every value is in the table that it must
// be in, refers to something that exists, and is defined once. gcInit checks much less: it even
// loads files whose end has become zeros.
//
// What no check of a file can detect: a different creation time, a different number or name where
// any would be valid, different cells of a table. The cells of all tables are at the end of a file,
// so zeros from there on pass. Sign or checksum a file where that matters.
//
// Cost: time in proportion to the bytes, whatever they are; memory only for as long as the call
// takes, some words for every text, number and name of the file. Throws nothing but std::bad_alloc.
// Any number of threads may verify at once.
#ifndef RUXCOMP_VERIFY_H_
#define RUXCOMP_VERIFY_H_

#include <optional>
#include <string_view>

#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/meta_walk.h"
#include "ruxcomp/verify/meta_rules.h"

namespace ruxcomp {

// What is wrong: offset, record, field and reason; and that as one line, without a line feed.
using file::Fault;
using file::FaultText;

// The first fault in the order of the file; none when it is sound.
inline std::optional<Fault> Verify(std::string_view bytes) {
  verify::MetaRules rules;
  file::Faults faults;
  file::WalkMeta(bytes, faults, rules);
  if (faults.empty()) return std::nullopt;
  return faults.list().front();
}

}  // namespace ruxcomp

#endif  // RUXCOMP_VERIFY_H_
