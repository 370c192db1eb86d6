#include <cstdint>
#include <iterator>

#include "ruxcomp/data.h"
#include "ruxcomp/language/entries.h"   // IWYU pragma: keep
#include "ruxcomp/language/sections.h"  // IWYU pragma: keep

using namespace ruxcomp::language;

extern "C" {

const tagNTMAP g_NTMapSect[] = {
#define SECTION(keyword, number, notation, form, naming, uniqueness) {#keyword, SECTION_##keyword},
#include "ruxcomp/language/sections.def"
};
const std::uint32_t g_dwNTMSect = std::size(g_NTMapSect);

const tagNTMAP g_NTMapEntry[] = {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) {keyword, ENTRY_##name},
#define NAMED_ENTRY(name, keyword, payload, number, table, prefix) {keyword, ENTRY_##name},
#define PLAIN_ENTRY(name, keyword, payload, number) {keyword, ENTRY_##name},
#include "ruxcomp/language/entries.def"
};
const std::uint32_t g_dwNTMEntry = std::size(g_NTMapEntry);

}  // extern "C"

// A program that names a table has a copy of it, as large as it was at link time: another size
// breaks the program.
static_assert(std::size(g_NTMapSect) == 14, "a section keyword more breaks linked programs");
static_assert(std::size(g_NTMapEntry) == 37, "an entry keyword more breaks linked programs");
