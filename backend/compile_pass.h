// Turning the checked source model into compiled records.
#ifndef BACKEND_COMPILE_PASS_H_
#define BACKEND_COMPILE_PASS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "ruxcomp/records.h"

// The compiled sections: of the run going on, or of the loaded meta file. Owned by this list;
// released by CompDestory.
extern std::vector<tagGCSECT*> g_GCHead;

// Compiles every section of the source model into g_GCHead. InitTblD comes first. Returns 1.
std::uint32_t Compile();

// A new, empty record for a section of that kind; null for kinds that are not compiled.
tagGCSECT* CreateGCSect(std::uint32_t section_id);

// The compiled identifier of an entry with that key; 0 for entries that are not compiled.
std::uint32_t GetEntryName(std::uint32_t entry_id, const std::string& key);

// How often the records of g_GCHead were released or replaced: an index of them is
// valid for one generation.
std::uint32_t RecordsGeneration();
void InvalidateRecords();

// Deletes every record of g_GCHead. The symbol tables stay: a later run goes on with their indices.
void CompDestory();

#endif  // BACKEND_COMPILE_PASS_H_
