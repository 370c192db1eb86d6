/* What answers.c prints, read through ruxmeta/walk.h where that has a function for it. */
#include "ruxmeta/walk.h"

static ruxmeta_view view = RUXMETA_VIEW_INIT;

static ruxmeta_status open_view(const char* path, ruxmeta_model** model, ruxmeta_fault* fault) {
  const ruxmeta_status status = ruxmeta_open(path, model, fault);
  return status == RUXMETA_OK ? ruxmeta_get_view(*model, &view) : status;
}

static size_t first_values(ruxmeta_entry entry, ruxmeta_value* values, size_t capacity) {
  const size_t count = ruxmeta_view_value_count(entry);
  size_t i;
  for (i = 0; i < count && i < capacity; ++i) values[i] = ruxmeta_view_entry_value(&view, entry, i);
  return count;
}

#define ruxmeta_open open_view
#define ruxmeta_section_count(model, kind) ruxmeta_view_section_count(&view, kind)
#define ruxmeta_section_at(model, kind, ordinal) ruxmeta_view_section_at(&view, kind, ordinal)
#define ruxmeta_section_entries ruxmeta_view_section_entries
#define ruxmeta_next_entry ruxmeta_view_next_entry
#define ruxmeta_entry_identifier ruxmeta_view_entry_identifier
#define ruxmeta_value_count ruxmeta_view_value_count
#define ruxmeta_entry_value(entry, n) ruxmeta_view_entry_value(&view, entry, n)
#define ruxmeta_entry_values first_values
#include "answers.c"
