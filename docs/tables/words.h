// Names of what the tables of the language say.
#ifndef DOCS_TABLES_WORDS_H_
#define DOCS_TABLES_WORDS_H_

#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

// Empty for what says nothing.
const char* WordFor(ruxcomp::language::Form form);
const char* WordFor(ruxcomp::language::Naming naming);
const char* WordFor(ruxcomp::language::Uniqueness uniqueness);
const char* WordFor(ruxcomp::language::EntryPayload payload);
const char* WordFor(ruxcomp::language::Role role);
const char* WordFor(ruxcomp::language::Content content);
const char* WordFor(ruxcomp::language::NameForm form);

#endif  // DOCS_TABLES_WORDS_H_
