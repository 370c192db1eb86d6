/* Meta files for programs in C that read much of them: what ruxmeta.h answers by calls, written
 * into the program by the compiler.
 *
 *   ruxmeta_view view = RUXMETA_VIEW_INIT;
 *   if (ruxmeta_get_view(model, &view) != RUXMETA_OK) return fail();
 *   for (size_t i = 0; i < ruxmeta_view_section_count(&view, RUXMETA_SECTION_SENSOR); ++i) {
 *     ruxmeta_entries entries =
 *         ruxmeta_view_section_entries(ruxmeta_view_section_at(&view, RUXMETA_SECTION_SENSOR, i));
 *     for (ruxmeta_entry entry; ruxmeta_view_next_entry(&entries, &entry);) {
 *       for (size_t n = 0; n < ruxmeta_view_value_count(entry); ++n) {
 *         const ruxmeta_value value = ruxmeta_view_entry_value(&view, entry, n);
 *         ...
 *
 * Each function gives the answer of the one in ruxmeta.h whose name has no `view_`, also for a
 * handle that is not there. Handles of both are the same: either may be given what the other
 * returned.
 *
 * A program that includes this header contains the layout of ruxmeta_view and of records in meta
 * files (docs/formats.md). Neither changes while the library is libruxmeta.so.0.
 */
#ifndef RUXMETA_WALK_H_
#define RUXMETA_WALK_H_

#include <stddef.h>
#include <stdint.h>

#include "ruxmeta.h"
#include "ruxmeta/numbers.h"

/* C has no other casts; clang warns of them in C++, also here. */
#if defined(__cplusplus) && defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wold-style-cast"
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* C has no other null pointer. NOLINTBEGIN(modernize-use-nullptr) */

/* A record is words of 4 bytes, the least significant byte first, at any address. These are the
 * address and the number of the n-th word. */
static inline const unsigned char* ruxmeta_view_word_at(const void* record, size_t n) {
  return (const unsigned char*)record + 4 * n;
}
static inline uint32_t ruxmeta_view_word(const void* record, size_t n) {
  const unsigned char* const byte = ruxmeta_view_word_at(record, n);
  return (uint32_t)byte[0] | (uint32_t)byte[1] << 8 | (uint32_t)byte[2] << 16 |
         (uint32_t)byte[3] << 24;
}

/* Sections and entries begin with an identifier, and the count of the entries or values that
 * follow. */
enum { RUXMETA_HEAD_WORDS = 2 };

static inline size_t ruxmeta_view_section_count(const ruxmeta_view* view, uint32_t kind) {
  const uint32_t i = kind - RUXMETA_SECTION_MORVRUX;
  return i < view->kinds ? view->kind_begins[i + 1] - view->kind_begins[i] : 0;
}

static inline ruxmeta_section ruxmeta_view_section_at(const ruxmeta_view* view, uint32_t kind,
                                                      size_t ordinal) {
  ruxmeta_section section = {NULL, NULL};
  if (ordinal < ruxmeta_view_section_count(view, kind)) {
    const size_t begin = view->kind_begins[kind - RUXMETA_SECTION_MORVRUX];
    section.model = view->owner;
    section.at = ruxmeta_view_word_at(view->records, view->places[begin + ordinal]);
  }
  return section;
}

static inline ruxmeta_entries ruxmeta_view_section_entries(ruxmeta_section section) {
  ruxmeta_entries entries = {NULL, NULL, 0};
  if (section.at != NULL) {
    entries.model = section.model;
    entries.at = ruxmeta_view_word_at(section.at, RUXMETA_HEAD_WORDS);
    entries.left = ruxmeta_view_word(section.at, 1);
  }
  return entries;
}

/* Most entries have one value: the processor guesses that and goes on without waiting for the
 * count. */
static inline int ruxmeta_view_next_entry(ruxmeta_entries* entries, ruxmeta_entry* entry) {
  uint32_t count;
  entry->model = NULL;
  entry->at = NULL;
  if (entries->left == 0) return 0;
  entry->model = entries->model;
  entry->at = entries->at;
  count = ruxmeta_view_word(entry->at, 1);
  entries->at = ruxmeta_view_word_at(entry->at, RUXMETA_HEAD_WORDS + 1);
  if (__builtin_expect(count != 1, 0)) {
    entries->at = ruxmeta_view_word_at(entry->at, (size_t)RUXMETA_HEAD_WORDS + count);
  }
  --entries->left;
  return 1;
}

static inline uint32_t ruxmeta_view_entry_identifier(ruxmeta_entry entry) {
  return entry.at != NULL ? ruxmeta_view_word(entry.at, 0) : 0xFFFFFFFF;
}

static inline size_t ruxmeta_view_value_count(ruxmeta_entry entry) {
  return entry.at != NULL ? ruxmeta_view_word(entry.at, 1) : 0;
}

static inline ruxmeta_value ruxmeta_view_index_value(const ruxmeta_view* view, uint32_t index) {
  ruxmeta_value value = {RUXMETA_NOTHING, 0, 0, {"", 0}};
  const uint32_t index_class = index >> RUXMETA_CLASS_SHIFT;
  const uint32_t ordinal = index & RUXMETA_ORDINAL_MASK;
  value.index = index;
  if (index_class < view->class_count) {
    const ruxmeta_symbols* const own = &view->classes[index_class];
    if (ordinal >= own->count) return ruxmeta_index_value(view->model, index);
    if (own->symbols[ordinal].text < RUXMETA_NO_TEXT) {
      value.kind = RUXMETA_TEXT;
      value.text.data = view->texts + own->symbols[ordinal].text;
      value.text.size = own->symbols[ordinal].number;
    } else if (own->symbols[ordinal].number != 0xFFFFFFFF) {
      value.kind = RUXMETA_NUMBER;
      value.number = own->symbols[ordinal].number;
    }
  } else if (RUXMETA_IS_IMMEDIATE(index - ordinal)) {
    value.kind = RUXMETA_NUMBER;
    value.number = ordinal;
  }
  return value;
}

static inline ruxmeta_value ruxmeta_view_entry_value(const ruxmeta_view* view, ruxmeta_entry entry,
                                                     size_t n) {
  const ruxmeta_value nothing = {RUXMETA_NOTHING, 0xFFFFFFFF, 0, {"", 0}};
  if (n >= ruxmeta_view_value_count(entry)) return nothing;
  return ruxmeta_view_index_value(view, ruxmeta_view_word(entry.at, RUXMETA_HEAD_WORDS + n));
}

/* NOLINTEND(modernize-use-nullptr) */

#ifdef __cplusplus
}
#endif

#if defined(__cplusplus) && defined(__clang__)
#pragma clang diagnostic pop
#endif

#endif /* RUXMETA_WALK_H_ */
