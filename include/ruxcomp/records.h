// The records that cross the library's boundary.
#ifndef RUXCOMP_RECORDS_H_
#define RUXCOMP_RECORDS_H_

#include <cstdint>
#include <vector>

// What gcInit and gdInit store about the file that they read.
struct tagMETAFILEINFO {
  std::uint32_t version;       // format version, RUX_VERSION or RUXD_VERSION
  std::uint32_t creationTime;  // seconds since 1970-01-01 UTC, the low 32 bits
};

// What a table index stands for.
enum tagTBLKIND : std::uint32_t {
  RUX_DATA_NONE = 0,    // nothing
  RUX_DATA_NUMBER = 1,  // tagTBLDATA::data.number
  RUX_DATA_STRING = 2,  // tagTBLDATA::data.string
};

// The result of looking a table index up. A string is owned by the library's symbol tables and
// stays valid until the next gcInit.
struct tagTBLDATA {
  std::uint32_t kind;   // a tagTBLKIND
  std::uint32_t index;  // the index that was looked up; 0xFFFFFFFF when none was picked
  union {
    const char* string;    // kind RUX_DATA_STRING: zero-terminated
    std::uint32_t number;  // kind RUX_DATA_NUMBER
  } data;
};
static_assert(sizeof(tagTBLDATA) == 2 * sizeof(std::uint32_t) + sizeof(const char*),
              "two words and a pointer, without padding: the layout is part of the interface");

// A compiled entry: its identifier (a RUX_ENTRY_... or the table index of its name) and its values
// (table indices and immediate codes).
struct tagGCENTRY {
  std::uint32_t identifier;
  std::vector<std::uint32_t> values;
};

// A compiled section: its identifier (a RUX_SECT_...) and its entries in file order.
struct tagGCSECT {
  std::uint32_t identifier;
  std::vector<tagGCENTRY> entries;
};

#endif  // RUXCOMP_RECORDS_H_
