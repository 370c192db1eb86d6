// Querying a meta file.
//
//   if (!gcInit("board.meta", nullptr)) return Fail(gcGetLastError());
//   const std::uint32_t count = gcGetSectCount(RUX_SECT_SENSOR);
//   for (std::uint32_t i = 0; i < count; ++i) {
//     const GCSECTION sensor = gcGetSectByIndex(RUX_SECT_SENSOR, i);
//     const GCENTRY name = gcGetEntryByType(sensor, RUX_ENTRY_NAME);
//     const tagTBLDATA text = gcGetValueByIndex(name, 0);
//     if (text.kind == RUX_DATA_STRING) std::puts(text.data.string);
//   }
//   gcUnInit();
//
// One meta file is loaded at a time; call everything from one thread, or with one lock around every
// call. Queries throw nothing and need no memory. Handles point into the loaded data, which hosts
// only read, a section handle at a tagGCSECT and an entry handle at a tagGCENTRY (records.h): they
// stay valid until gcUnInit or the next gcInit, strings until the next gcInit. Release a loaded
// file with gcUnInit before loading the next: gcInit does not.
//
// Cost: sections are found, or known to be missing, by ordinal, ID and name in constant time after
// the first query of that sort, which builds an index. Each value that is looked up
// (gcGetValueByIndex, gcGetValueByID) is a walk over its symbol table, linear in the number of
// distinct texts or numbers in the file. Entries are found by a walk over their section. The read
// model (model.h) walks over the entries of small sections only, and over nothing else: a host that
// makes many queries should use it.
//
// Numbers have no sign: a -20 of the script is 0xFFFFFFEC in `data.number`. Convert it to
// std::int32_t where it may be below 0. A -1 is 0xFFFFFFFF, which is of kind RUX_DATA_NONE.
//
// Each function but gcUnInit stores a last-error code, 0 on success; gcGetLastError reads it. The
// codes are named in identifiers.h and explained in language/last_errors.def. Before a gcInit every
// query sees empty data. Damaged files are refused by gcInit; what it could read until then stays
// visible. It refuses what it cannot read, not all that is wrong: it loads a file whose end has
// become zeros, which Verify (verify.h) refuses.
#ifndef RUXCOMP_QUERY_H_
#define RUXCOMP_QUERY_H_

#include <cstdint>
#include <string>

#include "ruxcomp/api.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/records.h"

using GCSECTION = void*;  // a section of the loaded meta file; null: none
using GCENTRY = void*;    // an entry of such a section; null: none

// Stores a code for gcGetLastError. Keeps its C++ symbol name, unlike all others.
RUX_API void gcSetLastError(std::uint32_t code);

extern "C" {

// The code that the last function here stored, 0 (RUX_ERROR_OK) after a success.
RUX_API std::uint32_t gcGetLastError();

// Loads a meta file. `info`, when not null, receives format version and creation time. Returns 1,
// or 0 with RUX_ERROR_CANNOT_READ when the file is missing, damaged, or of another format or
// version.
RUX_API std::uint32_t gcInit(const std::string& path, tagMETAFILEINFO* info = nullptr);

// Releases the sections of the loaded file (the symbol tables stay). Returns 1; sets no code.
RUX_API std::uint32_t gcUnInit();

// Sections. `section` is a RUX_SECT_....

// How many sections of the kind there are.
RUX_API std::uint32_t gcGetSectCount(std::uint32_t section);

// The ordinal-th section of the kind in file order, from 0. Null: NO_SECTION when there is none of
// the kind, OUT_OF_RANGE when there are fewer.
RUX_API GCSECTION gcGetSectByIndex(std::uint32_t section, std::uint32_t ordinal);

// The first section of the kind with that ID. Null: NO_SECTION when there is none of the kind,
// ID_NOT_FOUND when none has this ID, NO_IDS when none has any.
RUX_API GCSECTION gcGetSectByID(std::uint32_t section, std::uint32_t id);

// The first section of the kind with that NAME; for PROPERTY, GLOBAL and REPEATER also the first
// that has an entry of that name. Null: NO_SECTION when there is none of the kind, NAME_NOT_FOUND
// when none has this name, NO_NAMES when none has any. A null name is taken as "".
RUX_API GCSECTION gcGetSectByName(std::uint32_t section, const char* name);

// The ordinal of the group with that name, as a sensor's PARENT value carries it in its low 24
// bits; "0" is the root group 0. 0xFFFFFFFF: NO_SECTION when there is no such group.
RUX_API std::uint32_t gcGetGroupIndex(const char* name);

// Entries of a section. A null section handle gives NO_SECTION.

// How many entries the section has; 0xFFFFFFFF for a null handle.
RUX_API std::uint32_t gcGetEntryCount(GCSECTION section);

// The first entry with that identifier (a RUX_ENTRY_... or a table index). Null: NO_ENTRY.
RUX_API GCENTRY gcGetEntryByType(GCSECTION section, std::uint32_t identifier);

// The ordinal-th entry, from 0; its identifier is stored in *identifier (may be null). Null:
// OUT_OF_RANGE, also for a section without entries.
RUX_API GCENTRY gcGetEntryByIndex(GCSECTION section, std::uint32_t ordinal,
                                  std::uint32_t* identifier);

// The first entry whose name is that: a property, global, value or repeater name without its prefix
// ("IPMI" for VALUE_IPMI, "" for VALUE). Its identifier is stored in *identifier (may be null).
// Null: NO_ENTRY for a section without entries, else NAME_NOT_FOUND. A null name is taken as "".
RUX_API GCENTRY gcGetEntryByName(GCSECTION section, const char* name, std::uint32_t* identifier);

// Values of an entry. A null entry handle gives NO_ENTRY.

// How many values the entry has; 0xFFFFFFFF for a null handle.
RUX_API std::uint32_t gcGetValueCount(GCENTRY entry);

// The ordinal-th value, from 0, looked up in the symbol tables. Of kind RUX_DATA_NONE: NO_VALUE for
// an entry without values and OUT_OF_RANGE beyond them (index 0xFFFFFFFF), UNRESOLVED when the
// tables do not have it (index: the value).
RUX_API tagTBLDATA gcGetValueByIndex(GCENTRY entry, std::uint32_t ordinal);

// The part of a value, global or repeater entry that a RUX_SELECT_... names. Of kind RUX_DATA_NONE:
// NO_VALUE when the entry has no such part, UNRESOLVED as above or when the value has no type,
// NOT_SELECTABLE for other entries.
RUX_API tagTBLDATA gcGetValueByID(GCENTRY entry, std::uint32_t selector);

// The RUX_TABLE_CELLS (256) cells of the ordinal-th TABLE section, copied into `cells`. Returns 1,
// or 0 with OUT_OF_RANGE and `cells` untouched.
RUX_API std::uint32_t gcGetTableData(std::uint32_t ordinal, std::uint8_t* cells);

}  // extern "C"

// The same for names that are standard strings.
inline GCSECTION gcGetSectByName(std::uint32_t section, const std::string& name) {
  return gcGetSectByName(section, name.c_str());
}
inline std::uint32_t gcGetGroupIndex(const std::string& name) {
  return gcGetGroupIndex(name.c_str());
}
inline GCENTRY gcGetEntryByName(GCSECTION section, const std::string& name,
                                std::uint32_t* identifier) {
  return gcGetEntryByName(section, name.c_str(), identifier);
}

#endif  // RUXCOMP_QUERY_H_
