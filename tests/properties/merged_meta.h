// What a compile run writes in a process whose symbol tables hold something already.
#ifndef TESTS_PROPERTIES_MERGED_META_H_
#define TESTS_PROPERTIES_MERGED_META_H_

#include <cstdint>
#include <string>
#include <vector>

#include "compiled/meta.h"

// The bytes, creation time 0, of the meta file of the script that alone compiles to `alone`: after
// a run or a load that left the tables of `before`, and with the sections' kinds in that order.
//
// Keys that the tables have keep their indices and new ones follow: first the names, table by
// table, then numbers and strings in the order of the sections.
std::string MergedMeta(const rux::compiled::CompiledMeta& before,
                       const rux::compiled::CompiledMeta& alone,
                       const std::vector<std::uint32_t>& kinds);

#endif  // TESTS_PROPERTIES_MERGED_META_H_
