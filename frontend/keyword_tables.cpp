#include <iterator>

#include "ruxcomp/data.h"

extern "C" {

const tagNTMAP g_NTMapSect[] = {
#define SECTION(keyword, kind, notation) {#keyword, 0x20000000 + (kind)},
#include "ruxcomp/sections.def"
};
const std::uint32_t g_dwNTMSect = std::size(g_NTMapSect);

const tagNTMAP g_NTMapEntry[] = {
#define FIXED_ENTRY(name, keyword, identifier, compiled) {keyword, identifier},
#define NAMED_ENTRY(name, keyword, identifier, table, prefix) {keyword, identifier},
#define PLAIN_ENTRY(name, keyword, identifier) {keyword, identifier},
#include "ruxcomp/entries.def"
};
const std::uint32_t g_dwNTMEntry = std::size(g_NTMapEntry);

}  // extern "C"

static_assert(std::size(g_NTMapSect) == 14);
static_assert(std::size(g_NTMapEntry) == 37);
