// What each section kind knows: its entry templates and what becomes of other keys.
#ifndef FRONTEND_SECTION_SCHEMA_H_
#define FRONTEND_SECTION_SCHEMA_H_

#include <cstdint>
#include <initializer_list>

#include "frontend/identifiers.h"

// An empty entry that every new section of the kind starts with.
struct EntryTemplate {
  EntryId identifier;
  tagNOTATION notation;
};

// A key that no template takes becomes an entry of this identifier when it begins with the prefix.
struct FreeEntryRule {
  const char* prefix;
  EntryId identifier;
  tagNOTATION notation;
};

struct SectionSchema {
  std::initializer_list<EntryTemplate> templates;
  std::initializer_list<FreeEntryRule> freeEntries;  // the first that fits; none: item rejected
};

// The schema of a kind; kinds that read their items by code of their own have no free entries.
const SectionSchema& SchemaOf(SectionId kind);

#endif  // FRONTEND_SECTION_SCHEMA_H_
