/* All that the C interface answers about a meta file, as text:
 *
 *   c_answers META
 *
 * answers_of_model.cpp prints the same through the read model. As the file is C and C++, it is
 * compiled as both.
 */
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>

#include "ruxmeta.h"

/* Names hold any bytes. */
static void print_text(ruxmeta_text text) {
  size_t i;
  printf(" \"");
  for (i = 0; i < text.size; ++i) {
    const int byte = text.data[i] & 0xFF;
    if (byte > ' ' && byte < 0x7F && byte != '"' && byte != '\\') {
      putchar(byte);
    } else {
      printf("\\%02X", byte);
    }
  }
  printf("\"%s", text.data[text.size] == '\0' ? "" : " without a zero");
}

static void print_value(ruxmeta_value value) {
  printf(" [%" PRIX32, value.index);
  if (value.kind == RUXMETA_NUMBER) printf(" %" PRIu32, value.number);
  if (value.kind == RUXMETA_TEXT) print_text(value.text);
  printf("]");
}

/* Selectors that name an item of an entry, and some that name none. */
static void print_parts(ruxmeta_entry entry) {
  uint32_t selector;
  for (selector = 0; selector <= 0x1A0000; selector += 0x10000) {
    uint32_t item;
    for (item = 0; item < 4; ++item) {
      const ruxmeta_value part = ruxmeta_entry_part(entry, selector + item);
      if (part.kind == RUXMETA_NOTHING) continue;
      printf("      part %" PRIX32, selector + item);
      print_value(part);
      printf("\n");
    }
  }
}

static void print_entry(ruxmeta_entry entry) {
  ruxmeta_value values[4];
  const size_t count = ruxmeta_entry_values(entry, values, 4);
  size_t i;
  printf("    entry %" PRIX32, ruxmeta_entry_identifier(entry));
  print_text(ruxmeta_entry_name(entry));
  for (i = 0; i < count && i < 4; ++i) print_value(values[i]);
  for (; i < count; ++i) print_value(ruxmeta_entry_value(entry, i));
  printf(" %zu\n", ruxmeta_value_count(entry));
  print_parts(entry);
}

static void print_section(ruxmeta_section section) {
  ruxmeta_entries entries = ruxmeta_section_entries(section);
  ruxmeta_entry entry;
  const ruxmeta_section parent = ruxmeta_section_parent(section);
  printf("  section %" PRIX32 " %zu", ruxmeta_section_kind(section),
         ruxmeta_section_ordinal(section));
  print_text(ruxmeta_section_name(section));
  print_value(ruxmeta_section_id(section));
  if (parent.at != NULL) printf(" in %zu", ruxmeta_section_ordinal(parent));
  printf(" %zu\n", entries.left);
  while (ruxmeta_next_entry(&entries, &entry)) {
    const ruxmeta_entry same = ruxmeta_find_entry(section, ruxmeta_entry_identifier(entry));
    print_entry(entry);
    if (same.at != entry.at) printf("    found before\n");
  }
}

/* What look-ups by name and by ID return for what the section has. */
static void print_look_ups(const ruxmeta_model* model, ruxmeta_section section) {
  const uint32_t kind = ruxmeta_section_kind(section);
  const ruxmeta_value id = ruxmeta_section_id(section);
  const ruxmeta_section named =
      ruxmeta_find_section(model, kind, ruxmeta_section_name(section).data);
  printf("  named %zu", ruxmeta_section_ordinal(named));
  if (id.kind == RUXMETA_NUMBER) {
    printf(" with ID %zu",
           ruxmeta_section_ordinal(ruxmeta_find_section_by_id(model, kind, id.number)));
  }
  printf("\n");
}

static void print_kind(const ruxmeta_model* model, uint32_t kind) {
  const size_t count = ruxmeta_section_count(model, kind);
  size_t i;
  printf("kind %" PRIX32 " %zu\n", kind, count);
  for (i = 0; i < count; ++i) {
    const ruxmeta_section section = ruxmeta_section_at(model, kind, i);
    print_section(section);
    print_look_ups(model, section);
  }
}

static void print_groups_and_tables(const ruxmeta_model* model) {
  const size_t groups = ruxmeta_section_count(model, RUXMETA_SECTION_GROUP);
  const uint8_t* cells;
  size_t i;
  uint32_t ordinal;
  for (i = 0; i < groups; ++i) {
    const ruxmeta_section group = ruxmeta_section_at(model, RUXMETA_SECTION_GROUP, i);
    if (ruxmeta_find_group(model, ruxmeta_section_name(group).data, &ordinal)) {
      printf("group %zu %" PRIu32 "\n", i, ordinal);
    }
  }
  if (ruxmeta_find_group(model, "0", &ordinal)) printf("root group %" PRIu32 "\n", ordinal);
  for (i = 0; (cells = ruxmeta_table_cells(model, i)) != NULL; ++i) {
    size_t cell;
    printf("table %zu", i);
    for (cell = 0; cell < RUXMETA_TABLE_CELLS; ++cell) printf(" %02X", cells[cell]);
    printf("\n");
  }
}

int main(int argc, char** argv) {
  ruxmeta_model* model;
  ruxmeta_fault fault = RUXMETA_FAULT_INIT;
  ruxmeta_info info = RUXMETA_INFO_INIT;
  uint32_t kind;
  if (argc != 2) return 2;
  if (ruxmeta_open(argv[1], &model, &fault) != RUXMETA_OK) {
    printf("%" PRIu64 " %s\n", fault.offset, fault.text);
    return 1;
  }
  if (ruxmeta_get_info(model, &info) != RUXMETA_OK) return 1;
  printf("version %" PRIX32 " time %" PRIu32 "\n", info.format_version, info.creation_time);
  for (kind = RUXMETA_SECTION_MORVRUX - 1; kind <= RUXMETA_SECTION_REPEATER + 1; ++kind) {
    print_kind(model, kind);
  }
  print_groups_and_tables(model);
  ruxmeta_close(model);
  return 0;
}
