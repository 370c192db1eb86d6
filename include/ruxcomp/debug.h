// Querying a debug meta file: the sections and entries of a script with their texts.
//
//   if (!gdInit("board.metad")) return Fail();
//   for (std::uint32_t i = 0; GDSECTION sensor = gdGetSectByIndex(RUX_SECT_SENSOR, i); ++i) {
//     for (std::uint32_t j = 0; GDENTRY entry = gdGetEntryByIndex(sensor, j); ++j) {
//       std::printf("%s = %s\n", gdGetEntryName(entry), gdGetValue(entry).c_str());
//     }
//   }
//   gdUnInit();
//
// The loaded model is the one that a compile run builds: start from an empty one, that is before
// any gccParse and gdInit, or after gccCompEnd and gdUnInit. gdInit adds to what is there and
// clears nothing. A second load in one process gets its own sections, entries and texts, but the
// list of source files is only taken from the first file that the process loads.
//
// Handles and texts point into the model and stay valid until gdUnInit or gccCompEnd. Call
// everything from one thread. The last-error word is gdGetLastError's; where a comment says
// "compiled side", the code is stored for gcGetLastError instead and gdGetLastError keeps its old
// value: part of the interface.
//
// Cost: gdInit takes time and memory in proportion to the file. A section by ordinal takes constant
// time, everything else at most a walk over the entries of one section.
#ifndef RUXCOMP_DEBUG_H_
#define RUXCOMP_DEBUG_H_

#include <cstdint>
#include <string>

#include "ruxcomp/api.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/records.h"

using GDSECTION = void*;  // a section of the loaded model; null: none
using GDENTRY = void*;    // an entry of such a section; null: none

// Stores a code for gdGetLastError. Keeps its C++ symbol name, unlike all others.
RUX_API void gdSetLastError(std::uint32_t code);

extern "C" {

// The code that the last function here stored, 0 (RUX_ERROR_OK) after a success.
RUX_API std::uint32_t gdGetLastError();

// Loads a debug meta file. `info`, when not null, receives format version and creation time.
// Returns 1 (OK on the compiled side), or 0, reported through Output, when the file is missing or
// of another format or version (no code). Throws std::out_of_range ("vector") for a file whose
// records are shorter than they say, for one that was not the first that its process wrote (its
// list of source files is missing), and for one whose first section is an INCLUDE; what was read
// until then stays, so call gdUnInit. A file that ends early is read as if zeros followed.
RUX_API std::uint32_t gdInit(const std::string& path, tagMETAFILEINFO* info = nullptr);

// Drops the whole model and the defined words. Returns 1.
RUX_API std::uint32_t gdUnInit();

// The ordinal-th section of a kind (RUX_SECT_...), from 0. Null: NO_SECTION when there is none of
// the kind, OUT_OF_RANGE on the compiled side when there are fewer.
RUX_API GDSECTION gdGetSectByIndex(std::uint32_t section, std::uint32_t ordinal);

// The text of the section's NAME, and of its PARENT. Null: NO_SECTION for a null handle, NO_ENTRY
// when the kind has no such entry, NO_VALUE when the script did not give it.
RUX_API const char* gdGetSectName(GDSECTION section);
RUX_API const char* gdGetSectPName(GDSECTION section);

// The number that the section's ID gives. 0xFFFFFFFF: codes as above, NO_VALUE also for a text that
// is not a number (a defined word is not one). Throws std::out_of_range for an empty text and a
// bare "0x".
RUX_API std::uint32_t gdGetSectID(GDSECTION section);

// The ordinal-th entry that the script gave, from 0. Null: NO_SECTION for a null handle; on the
// compiled side NO_ENTRY when the section has none, OUT_OF_RANGE when it has fewer.
RUX_API GDENTRY gdGetEntryByIndex(GDSECTION section, std::uint32_t ordinal);

// The entry's key. Null: NO_ENTRY for a null handle.
RUX_API const char* gdGetEntryName(GDENTRY entry);

// The entry's value as text, zero-terminated, in the caller's buffer; returns 1, or 0 with NO_ENTRY
// for a null handle. No size is passed. With a null buffer nothing is written and the result is the
// size that the buffer for this entry needs, terminating zero included: call it that way first. A
// damaged file may hold long texts, so that no fixed size is enough.
RUX_API std::uint32_t gdGetValue(GDENTRY entry, char* text);

}  // extern "C"

// The entry's value as text; empty for a null handle.
inline std::string gdGetValue(GDENTRY entry) {
  std::string text(gdGetValue(entry, nullptr), '\0');
  if (gdGetValue(entry, text.data())) text.resize(text.size() - 1);
  return text;
}

#endif  // RUXCOMP_DEBUG_H_
