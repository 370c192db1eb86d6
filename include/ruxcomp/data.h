// The library's exported data: keyword tables, symbol tables, version and last-error words.
//
// Everything here belongs to the library. Hosts read it and change nothing but the last-error
// words; the tables change with gccOutput and gcInit. If a host changes a table all the same, texts
// that queries returned go away with their keys, and queries by name or ID answer from the table as
// it was at the last query, until the size of one of the tables changes.
#ifndef RUXCOMP_DATA_H_
#define RUXCOMP_DATA_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ruxcomp/api.h"

// A row of a keyword table: a keyword and the identifier that it stands for.
struct tagNTMAP {
  const char* keyword;
  std::uint32_t identifier;
};

// Plain symbol names: without them the compiler would decorate the tables that hold strings.
extern "C" {

// The section keywords and the entry keywords, with their row counts. Some entry rows have an empty
// keyword, and two share one; see sections.def and entries.def of language/.
RUX_API extern const tagNTMAP g_NTMapSect[];
RUX_API extern const std::uint32_t g_dwNTMSect;
RUX_API extern const tagNTMAP g_NTMapEntry[];
RUX_API extern const std::uint32_t g_dwNTMEntry;

// The symbol tables (key to index) and the next index that each hands out; see
// language/symbol_tables.def.
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) \
  RUX_API extern std::map<key, std::uint32_t> g_tbl##name; \
  RUX_API extern std::uint32_t g_idx##name;
#include "ruxcomp/language/symbol_tables.def"

// The cells of the TABLE sections, RUX_TABLE_CELLS bytes each.
RUX_API extern std::vector<std::uint8_t> g_tblTableData;

// The version words of the meta file and of the debug meta file, and where the latter's data
// starts.
RUX_API extern const std::uint32_t RUX_VERSION;
RUX_API extern const std::uint32_t RUXD_VERSION;
RUX_API extern const std::uint32_t RUXD_DATA_OFFSET;

// What gcGetLastError and gdGetLastError return.
RUX_API extern std::uint32_t g_dwLastError;
RUX_API extern std::uint32_t g_dwLastErrorD;

}  // extern "C"

#endif  // RUXCOMP_DATA_H_
