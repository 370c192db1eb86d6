/* Meta files for programs in C, and in languages that call C.
 *
 *   ruxmeta_model *model;
 *   ruxmeta_fault fault = RUXMETA_FAULT_INIT;
 *   if (ruxmeta_open("board.meta", &model, &fault) != RUXMETA_OK) return fail(fault.text);
 *   size_t count = ruxmeta_section_count(model, RUXMETA_SECTION_SENSOR);
 *   for (size_t i = 0; i < count; ++i) {
 *     ruxmeta_section sensor = ruxmeta_section_at(model, RUXMETA_SECTION_SENSOR, i);
 *     ruxmeta_value limit = ruxmeta_entry_value(ruxmeta_find_entry(sensor,
 * RUXMETA_ENTRY_THRESHOLD_FH), 0); if (limit.kind == RUXMETA_NUMBER) printf("%s: %" PRIu32 "\n",
 * ruxmeta_section_name(sensor).data, limit.number);
 *   }
 *   ruxmeta_close(model);
 *
 * C99 and later, and C++. Link with -lruxmeta.
 *
 * Handles. A section or an entry is a small struct, passed by value, with members for the library
 * alone: a program looks only at `at`. It needs no release and is valid as long as its model. What
 * is not there is a handle whose `at` is NULL; every function takes such a handle, and answers with
 * 0, an empty text, a value of kind RUXMETA_NOTHING or a handle that is not there. So calls can be
 * chained unchecked.
 *
 * Texts. `data` points into the model, and a zero byte follows the text: it is a C string, except
 * that a name may hold any bytes but zero, so not always UTF-8. An empty text is "", never NULL.
 *
 * Errors. The functions that make a model return a ruxmeta_status. All others cannot fail. No
 * exception leaves the library.
 *
 * Memory and time. Opening a file is one pass over its bytes, which verifies it, and 8 bytes of
 * memory for each text and number and 4 for each section. Nothing else reserves memory, except that
 * the second look-up by ID or by name builds an index; without memory for one, look-ups walk.
 * What is at an ordinal is found without a search, except for entries, which are stepped
 * over.
 *
 * Threads. The library keeps nothing of the process: any number of models may be open, on any
 * threads, and any number of threads may read a model. Close one when no thread reads it.
 */
#ifndef RUXMETA_H_
#define RUXMETA_H_

#include <stddef.h>
#include <stdint.h>

#include "ruxmeta/numbers.h"

#ifdef __cplusplus
extern "C" {
#endif

/* C has no other way to name a type. NOLINTBEGIN(modernize-use-using) */

#define RUXMETA_API __attribute__((visibility("default")))

/* The version of the library as text, "0.1.0". */
RUXMETA_API const char* ruxmeta_version(void);

/* ------------------------------------------------------------------------------------ models */

typedef struct ruxmeta_model ruxmeta_model;

typedef enum ruxmeta_status {
  RUXMETA_OK = 0,
  RUXMETA_CANNOT_READ = 1, /* the file: it is missing, unreadable, or not a regular file */
  RUXMETA_NOT_SOUND = 2,   /* what `rux verify` refuses */
  RUXMETA_NO_MEMORY = 3,
  RUXMETA_BAD_ARGUMENT = 4 /* a null pointer, or a struct whose size is unknown */
} ruxmeta_status;

/* One line for people, in English: "not a sound meta file". "unknown status" for any other number.
 */
RUXMETA_API const char* ruxmeta_status_text(int status);

/* Why a model could not be made. A later version of the library may add members at the end; `size`
 * states which of them the program knows. */
typedef struct ruxmeta_fault {
  size_t size;     /* set it to sizeof(ruxmeta_fault), or use RUXMETA_FAULT_INIT */
  uint64_t offset; /* of the first byte that is wrong; 0 for a file that cannot be read */
  char text[256]; /* one line without a line feed, cut to fit: where, what was expected and found */
} ruxmeta_fault;

#define RUXMETA_FAULT_INIT          \
  {                                 \
    sizeof(ruxmeta_fault), 0, { 0 } \
  }

/* Opens a sound meta file. The file is mapped unless it is small, and must stay as it is while the
 * model is open: replace it by renaming another one over it, as `rux compile` does. `fault` may be
 * NULL. When the status is not RUXMETA_OK, *model is NULL. */
RUXMETA_API ruxmeta_status ruxmeta_open(const char* path, ruxmeta_model** model,
                                        ruxmeta_fault* fault);

/* The same of a file that is read into memory: what happens to the file later does not matter. */
RUXMETA_API ruxmeta_status ruxmeta_load(const char* path, ruxmeta_model** model,
                                        ruxmeta_fault* fault);

/* The same of `size` bytes at any address, which must stay as they are while the model is open. */
RUXMETA_API ruxmeta_status ruxmeta_open_bytes(const void* bytes, size_t size, ruxmeta_model** model,
                                              ruxmeta_fault* fault);

/* Releases the model and all that belongs to it. NULL is allowed. */
RUXMETA_API void ruxmeta_close(ruxmeta_model* model);

/* What a file states about itself; see ruxmeta_fault about `size`. */
typedef struct ruxmeta_info {
  size_t size;
  uint32_t format_version;
  uint32_t creation_time; /* seconds since 1970-01-01 UTC, the low 32 bits */
} ruxmeta_info;

#define RUXMETA_INFO_INIT \
  { sizeof(ruxmeta_info), 0, 0 }

/* RUXMETA_BAD_ARGUMENT when a pointer is NULL or info->size is unknown. */
RUXMETA_API ruxmeta_status ruxmeta_get_info(const ruxmeta_model* model, ruxmeta_info* info);

/* ------------------------------------------------------------------------- texts and values */

typedef struct ruxmeta_text {
  const char* data; /* a zero byte follows the text */
  size_t size;      /* in bytes, without that */
} ruxmeta_text;

typedef enum ruxmeta_value_kind {
  RUXMETA_NOTHING = 0, /* no such value, or an index that the file does not explain */
  RUXMETA_NUMBER = 1,
  RUXMETA_TEXT = 2
} ruxmeta_value_kind;

typedef struct ruxmeta_value {
  uint32_t kind;     /* a ruxmeta_value_kind */
  uint32_t index;    /* as it is in the file; 0xFFFFFFFF for a value that is not there */
  uint32_t number;   /* 0 unless it is a number. Files have no sign: -20 is 0xFFFFFFEC */
  ruxmeta_text text; /* empty unless it is a text */
} ruxmeta_value;

/* ---------------------------------------------------------------------------------- sections */

typedef struct ruxmeta_section {
  const void* model;
  const void* at; /* NULL: no section */
} ruxmeta_section;

/* Of a kind, RUXMETA_SECTION_SENSOR or another one, in the order of the script. 0 and no section
 * for other kinds, ordinals and a NULL model. */
RUXMETA_API size_t ruxmeta_section_count(const ruxmeta_model* model, uint32_t kind);
RUXMETA_API ruxmeta_section ruxmeta_section_at(const ruxmeta_model* model, uint32_t kind,
                                               size_t ordinal);

/* The first of the kind with that ID. */
RUXMETA_API ruxmeta_section ruxmeta_find_section_by_id(const ruxmeta_model* model, uint32_t kind,
                                                       uint32_t id);
/* The first of the kind with that NAME; for PROPERTY, GLOBAL and REPEATER also the first that has
 * an entry of that name. NULL finds nothing. */
RUXMETA_API ruxmeta_section ruxmeta_find_section(const ruxmeta_model* model, uint32_t kind,
                                                 const char* name);
/* The same of a name whose size is known, which takes less time. No zero byte need follow it. */
RUXMETA_API ruxmeta_section ruxmeta_find_section_text(const ruxmeta_model* model, uint32_t kind,
                                                      ruxmeta_text name);

/* A RUXMETA_SECTION_...; 0 for no section. */
RUXMETA_API uint32_t ruxmeta_section_kind(ruxmeta_section section);
/* Among the sections of its kind, from 0. */
RUXMETA_API size_t ruxmeta_section_ordinal(ruxmeta_section section);
/* Its NAME; empty when it has none. */
RUXMETA_API ruxmeta_text ruxmeta_section_name(ruxmeta_section section);
/* Its ID as a value, which is of kind RUXMETA_NOTHING when it has none. */
RUXMETA_API ruxmeta_value ruxmeta_section_id(ruxmeta_section section);
/* The GROUP that its PARENT names; none for the root group. */
RUXMETA_API ruxmeta_section ruxmeta_section_parent(ruxmeta_section section);

/* ----------------------------------------------------------------------------------- entries */

typedef struct ruxmeta_entry {
  const void* model;
  const void* at; /* NULL: no entry */
} ruxmeta_entry;

/* Those of a section that are still to come, in the order of the script. The members are for the
 * library alone, except for `left`: how many there are. */
typedef struct ruxmeta_entries {
  const void* model;
  const void* at;
  size_t left;
} ruxmeta_entries;

/*   ruxmeta_entries entries = ruxmeta_section_entries(section);
 *   for (ruxmeta_entry entry; ruxmeta_next_entry(&entries, &entry);) ...
 */
RUXMETA_API ruxmeta_entries ruxmeta_section_entries(ruxmeta_section section);
/* Stores the next entry and returns 1; when there is none, stores no entry and returns 0. */
RUXMETA_API int ruxmeta_next_entry(ruxmeta_entries* entries, ruxmeta_entry* entry);

/* The first one with that identifier: a RUXMETA_ENTRY_... . */
RUXMETA_API ruxmeta_entry ruxmeta_find_entry(ruxmeta_section section, uint32_t identifier);
/* The first one with that name: of a property, global, value or repeater, without its prefix. NULL
 * finds nothing. */
RUXMETA_API ruxmeta_entry ruxmeta_find_entry_named(ruxmeta_section section, const char* name);

/* A RUXMETA_ENTRY_..., or the index of the entry's name; 0xFFFFFFFF for no entry. */
RUXMETA_API uint32_t ruxmeta_entry_identifier(ruxmeta_entry entry);
/* The name that the identifier is the index of, without its prefix: "IPMI" of VALUE_IPMI. Empty for
 * a RUXMETA_ENTRY_..., and of VALUE. */
RUXMETA_API ruxmeta_text ruxmeta_entry_name(ruxmeta_entry entry);

RUXMETA_API size_t ruxmeta_value_count(ruxmeta_entry entry);
/* The n-th value, from 0. */
RUXMETA_API ruxmeta_value ruxmeta_entry_value(ruxmeta_entry entry, size_t n);
/* Stores the first `capacity` values, and returns how many the entry has: one call for all. */
RUXMETA_API size_t ruxmeta_entry_values(ruxmeta_entry entry, ruxmeta_value* values,
                                        size_t capacity);
/* The part that a RUXMETA_SELECT_... names; add 1, 2, ... for the first, second, ... of several. */
RUXMETA_API ruxmeta_value ruxmeta_entry_part(ruxmeta_entry entry, uint32_t selector);

/* ------------------------------------------------------------------------- groups and tables */

/* Stores the ordinal of the group with that name and returns 1; returns 0 when there is none. "0"
 * is the root group, 0. The low 24 bits of a PARENT value's index are such an ordinal. */
RUXMETA_API int ruxmeta_find_group(const ruxmeta_model* model, const char* name, uint32_t* ordinal);

/* The RUXMETA_TABLE_CELLS cells of the ordinal-th TABLE; NULL when there is none. */
RUXMETA_API const uint8_t* ruxmeta_table_cells(const ruxmeta_model* model, size_t ordinal);

/* ---------------------------------------------------------------------- reading without calls */

/* The value that an index of the file means: of kind RUXMETA_NOTHING when the file does not explain
 * it, or the model is NULL. */
RUXMETA_API ruxmeta_value ruxmeta_index_value(const ruxmeta_model* model, uint32_t index);

/* What an index of a symbol table means. */
typedef struct ruxmeta_symbol {
  uint32_t number; /* of a text: its size. 0xFFFFFFFF, and no text: nothing */
  uint32_t text;   /* where it begins in `texts`; RUXMETA_NO_TEXT and above: it is not a text */
} ruxmeta_symbol;

#define RUXMETA_NO_TEXT 0xFFFFFFFEU

/* A symbol table: what its first `count` indices mean. The library alone knows any others. */
typedef struct ruxmeta_symbols {
  const ruxmeta_symbol* symbols;
  size_t count;
} ruxmeta_symbols;

/* Where a model keeps what it reads, for the functions of ruxmeta/walk.h, which the compiler writes
 * into the program. It belongs to the model and is valid as long as that. The shape of all that it
 * points to is part of the interface, as are the members `at` of handles, which point to the
 * records of sections and entries in the file. See ruxmeta_fault about `size`. */
typedef struct ruxmeta_view {
  size_t size;
  const ruxmeta_model* model;
  const void* owner;              /* the member `model` of all handles */
  const unsigned char* records;   /* the file; what places count from */
  const uint32_t* places;         /* of sections, in words of 4 bytes: one kind after the other */
  const size_t* kind_begins;      /* where each kind begins among the places; the end of the last */
  size_t kinds;                   /* how many, from RUXMETA_SECTION_MORVRUX on */
  const ruxmeta_symbols* classes; /* by the upper byte of an index */
  size_t class_count;
  const char* texts; /* of all symbol tables; a zero byte follows each */
} ruxmeta_view;

#define RUXMETA_VIEW_INIT \
  { sizeof(ruxmeta_view), 0, 0, 0, 0, 0, 0, 0, 0, 0 }

/* RUXMETA_BAD_ARGUMENT when a pointer is NULL or view->size is unknown. */
RUXMETA_API ruxmeta_status ruxmeta_get_view(const ruxmeta_model* model, ruxmeta_view* view);

#undef RUXMETA_API

/* NOLINTEND(modernize-use-using) */

#ifdef __cplusplus
}
#endif

#endif /* RUXMETA_H_ */
