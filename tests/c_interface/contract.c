/* What holds for every use of the C interface: what is missing, null pointers, structs of other
 * sizes. Prints what does not hold, and then fails.
 *
 *   c_contract META NOT_META
 */
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "ruxmeta.h"
#include "ruxmeta/walk.h"

static int failures = 0;

#define EXPECT(condition)                            \
  do {                                               \
    if (!(condition)) {                              \
      printf("line %d: %s\n", __LINE__, #condition); \
      ++failures;                                    \
    }                                                \
  } while (0)

static int is_nothing(ruxmeta_value value) {
  return value.kind == RUXMETA_NOTHING && value.index == 0xFFFFFFFF && value.number == 0 &&
         value.text.size == 0 && strcmp(value.text.data, "") == 0;
}

static int is_empty(ruxmeta_text text) { return text.size == 0 && strcmp(text.data, "") == 0; }

static void expect_no_entry(ruxmeta_entry entry) {
  ruxmeta_value value;
  EXPECT(entry.at == NULL);
  EXPECT(ruxmeta_entry_identifier(entry) == 0xFFFFFFFF);
  EXPECT(is_empty(ruxmeta_entry_name(entry)));
  EXPECT(ruxmeta_value_count(entry) == 0);
  EXPECT(ruxmeta_entry_values(entry, &value, 1) == 0);
  EXPECT(is_nothing(ruxmeta_entry_value(entry, 0)));
  EXPECT(is_nothing(ruxmeta_entry_part(entry, RUXMETA_SELECT_TEXT)));
}

static void expect_no_section(ruxmeta_section section) {
  ruxmeta_entries entries = ruxmeta_section_entries(section);
  ruxmeta_entry entry;
  EXPECT(section.at == NULL);
  EXPECT(ruxmeta_section_kind(section) == 0);
  EXPECT(ruxmeta_section_ordinal(section) == 0);
  EXPECT(is_empty(ruxmeta_section_name(section)));
  EXPECT(is_nothing(ruxmeta_section_id(section)));
  EXPECT(ruxmeta_section_parent(section).at == NULL);
  EXPECT(entries.left == 0);
  EXPECT(ruxmeta_next_entry(&entries, &entry) == 0);
  expect_no_entry(entry);
  expect_no_entry(ruxmeta_find_entry(section, RUXMETA_ENTRY_ID));
  expect_no_entry(ruxmeta_find_entry_named(section, "NAME"));
}

static void test_nothing(void) {
  uint32_t ordinal = 7;
  ruxmeta_info info = RUXMETA_INFO_INIT;
  const ruxmeta_section none = {NULL, NULL};
  const ruxmeta_text a = {"A", 1};
  expect_no_section(none);
  expect_no_section(ruxmeta_section_at(NULL, RUXMETA_SECTION_SENSOR, 0));
  expect_no_section(ruxmeta_find_section(NULL, RUXMETA_SECTION_SENSOR, "A"));
  expect_no_section(ruxmeta_find_section_text(NULL, RUXMETA_SECTION_SENSOR, a));
  expect_no_section(ruxmeta_find_section_by_id(NULL, RUXMETA_SECTION_SENSOR, 1));
  EXPECT(ruxmeta_section_count(NULL, RUXMETA_SECTION_SENSOR) == 0);
  EXPECT(ruxmeta_find_group(NULL, "0", &ordinal) == 0 && ordinal == 7);
  EXPECT(ruxmeta_table_cells(NULL, 0) == NULL);
  EXPECT(ruxmeta_get_info(NULL, &info) == RUXMETA_BAD_ARGUMENT);
  ruxmeta_close(NULL);
}

static void test_opening(const char* meta, const char* not_meta) {
  ruxmeta_model* model = NULL;
  ruxmeta_fault fault = RUXMETA_FAULT_INIT;
  EXPECT(ruxmeta_open(NULL, &model, &fault) == RUXMETA_BAD_ARGUMENT && model == NULL);
  EXPECT(ruxmeta_load(NULL, &model, &fault) == RUXMETA_BAD_ARGUMENT);
  EXPECT(ruxmeta_open_bytes(NULL, 0, &model, &fault) == RUXMETA_BAD_ARGUMENT);
  EXPECT(ruxmeta_open(meta, NULL, &fault) == RUXMETA_BAD_ARGUMENT);
  EXPECT(ruxmeta_open_bytes("", 0, &model, &fault) == RUXMETA_NOT_SOUND && *fault.text != '\0');
  EXPECT(ruxmeta_open("/no/such/file", &model, &fault) == RUXMETA_CANNOT_READ && model == NULL);
  EXPECT(strstr(fault.text, "No such file") != NULL && fault.offset == 0);
  EXPECT(ruxmeta_open("/", &model, NULL) == RUXMETA_CANNOT_READ);
  EXPECT(ruxmeta_load(not_meta, &model, &fault) == RUXMETA_NOT_SOUND && model == NULL);
  fault.size = sizeof fault - 1;
  model = (ruxmeta_model*)&fault;
  EXPECT(ruxmeta_open(meta, &model, &fault) == RUXMETA_BAD_ARGUMENT && model == NULL);
  fault.size = sizeof fault + 8; /* that of a later version */
  EXPECT(ruxmeta_open(not_meta, &model, &fault) == RUXMETA_NOT_SOUND);
}

static void test_statuses(void) {
  int status;
  for (status = RUXMETA_OK; status < RUXMETA_BAD_ARGUMENT; ++status) {
    EXPECT(strcmp(ruxmeta_status_text(status), ruxmeta_status_text(status + 1)) != 0);
  }
  EXPECT(strcmp(ruxmeta_status_text(RUXMETA_BAD_ARGUMENT + 1), "unknown status") == 0);
  EXPECT(strcmp(ruxmeta_status_text(INT_MIN), "unknown status") == 0);
  EXPECT(strcmp(ruxmeta_version(), EXPECTED_VERSION) == 0);
}

/* Of a file that has sensors. */
static void test_beyond(const ruxmeta_model* model) {
  const size_t count = ruxmeta_section_count(model, RUXMETA_SECTION_SENSOR);
  const ruxmeta_section sensor = ruxmeta_section_at(model, RUXMETA_SECTION_SENSOR, 0);
  const ruxmeta_entry name = ruxmeta_find_entry(sensor, RUXMETA_ENTRY_NAME);
  ruxmeta_info info = RUXMETA_INFO_INIT;
  ruxmeta_value value;
  uint32_t ordinal = 7;
  EXPECT(count > 0 && ruxmeta_value_count(name) == 1);
  value.index = 5;
  EXPECT(ruxmeta_entry_values(name, NULL, 0) == 1);
  EXPECT(ruxmeta_entry_values(name, &value, 1) == 1 && value.kind == RUXMETA_TEXT);
  EXPECT(is_nothing(ruxmeta_entry_value(name, 1)));
  EXPECT(is_nothing(ruxmeta_entry_value(name, (size_t)-1)));
  expect_no_entry(ruxmeta_find_entry_named(sensor, NULL));
  expect_no_entry(ruxmeta_find_entry(sensor, 0xFFFFFFFE));
  expect_no_section(ruxmeta_section_at(model, RUXMETA_SECTION_SENSOR, count));
  expect_no_section(ruxmeta_section_at(model, RUXMETA_SECTION_SENSOR, (size_t)-1));
  expect_no_section(ruxmeta_section_at(model, 0, 0));
  expect_no_section(ruxmeta_find_section(model, RUXMETA_SECTION_SENSOR, NULL));
  expect_no_section(ruxmeta_find_section(model, RUXMETA_SECTION_SENSOR, "no such sensor"));
  expect_no_section(ruxmeta_find_section_by_id(model, RUXMETA_SECTION_SENSOR, 0xFFFFFFFE));
  EXPECT(ruxmeta_find_group(model, NULL, &ordinal) == 0);
  EXPECT(ruxmeta_find_group(model, "0", NULL) == 0);
  EXPECT(ruxmeta_find_group(model, "no such group", &ordinal) == 0 && ordinal == 7);
  EXPECT(ruxmeta_table_cells(model, (size_t)-1) == NULL);
  EXPECT(ruxmeta_get_info(model, NULL) == RUXMETA_BAD_ARGUMENT);
  info.size = sizeof info - 1;
  EXPECT(ruxmeta_get_info(model, &info) == RUXMETA_BAD_ARGUMENT);
}

/* A name of a known size, of a file whose sensors have names. */
static void test_text(const ruxmeta_model* model) {
  const ruxmeta_section sensor = ruxmeta_section_at(model, RUXMETA_SECTION_SENSOR, 0);
  ruxmeta_text name = ruxmeta_section_name(sensor);
  char longer[256];
  EXPECT(name.size > 1 && name.size < sizeof longer - 1);
  EXPECT(ruxmeta_find_section_text(model, RUXMETA_SECTION_SENSOR, name).at == sensor.at);
  memcpy(longer, name.data, name.size);
  longer[name.size] = '?';
  name.data = longer;
  EXPECT(ruxmeta_find_section_text(model, RUXMETA_SECTION_SENSOR, name).at == sensor.at);
  ++name.size;
  expect_no_section(ruxmeta_find_section_text(model, RUXMETA_SECTION_SENSOR, name));
  name.data = NULL;
  expect_no_section(ruxmeta_find_section_text(model, RUXMETA_SECTION_SENSOR, name));
}

/* Handles that are not there, and structs, as walk.h takes them. */
static void test_no_view(const ruxmeta_model* model) {
  const ruxmeta_section no_section = {NULL, NULL};
  const ruxmeta_entry none = {NULL, NULL};
  ruxmeta_entries entries = ruxmeta_view_section_entries(no_section);
  ruxmeta_entry entry;
  ruxmeta_view view = RUXMETA_VIEW_INIT;
  EXPECT(is_nothing(ruxmeta_index_value(NULL, RUXMETA_CLASS_Small)));
  EXPECT(ruxmeta_get_view(NULL, &view) == RUXMETA_BAD_ARGUMENT);
  EXPECT(ruxmeta_get_view(model, NULL) == RUXMETA_BAD_ARGUMENT);
  view.size = sizeof view - 1;
  EXPECT(ruxmeta_get_view(model, &view) == RUXMETA_BAD_ARGUMENT && view.model == NULL);
  /* A view that was never filled has nothing. */
  EXPECT(ruxmeta_view_section_count(&view, RUXMETA_SECTION_SENSOR) == 0);
  expect_no_section(ruxmeta_view_section_at(&view, RUXMETA_SECTION_SENSOR, 0));
  EXPECT(entries.left == 0);
  EXPECT(ruxmeta_view_next_entry(&entries, &entry) == 0);
  expect_no_entry(entry);
  EXPECT(ruxmeta_view_entry_identifier(none) == 0xFFFFFFFF);
  EXPECT(ruxmeta_view_value_count(none) == 0);
  EXPECT(is_nothing(ruxmeta_view_entry_value(&view, none, 0)));
}

static void expect_index(const ruxmeta_view* view, uint32_t index, uint32_t kind, uint32_t number) {
  const ruxmeta_value value = ruxmeta_view_index_value(view, index);
  const ruxmeta_value same = ruxmeta_index_value(view->model, index);
  EXPECT(value.index == index && value.kind == kind && value.number == number);
  EXPECT(same.index == index && same.kind == kind && same.number == number);
  EXPECT(value.text.size == same.text.size && strcmp(value.text.data, same.text.data) == 0);
}

/* Of a file that has sensors. */
static void test_view(const ruxmeta_model* model) {
  const ruxmeta_section sensor = ruxmeta_section_at(model, RUXMETA_SECTION_SENSOR, 0);
  const size_t count = ruxmeta_section_count(model, RUXMETA_SECTION_SENSOR);
  ruxmeta_view view = RUXMETA_VIEW_INIT;
  ruxmeta_section same;
  test_no_view(model);
  EXPECT(ruxmeta_get_view(model, &view) == RUXMETA_OK);
  same = ruxmeta_view_section_at(&view, RUXMETA_SECTION_SENSOR, 0);
  EXPECT(same.model == sensor.model && same.at == sensor.at);
  expect_no_section(ruxmeta_view_section_at(&view, RUXMETA_SECTION_SENSOR, count));
  expect_no_section(ruxmeta_view_section_at(&view, RUXMETA_SECTION_SENSOR, (size_t)-1));
  expect_no_section(ruxmeta_view_section_at(&view, 0, 0));
  expect_no_section(ruxmeta_view_section_at(&view, RUXMETA_SECTION_REPEATER + 1, 0));
  EXPECT(is_nothing(
      ruxmeta_view_entry_value(&view, ruxmeta_find_entry(sensor, RUXMETA_ENTRY_NAME), (size_t)-1)));
  expect_index(&view, RUXMETA_CLASS_Small + 5, RUXMETA_NUMBER, 5);
  expect_index(&view, RUXMETA_CLASS_Operator + 0xFFFFFF, RUXMETA_NUMBER, 0xFFFFFF);
  expect_index(&view, RUXMETA_CLASS_Group, RUXMETA_TEXT, 0);
  expect_index(&view, RUXMETA_CLASS_String + 0xFFFFFF, RUXMETA_NOTHING, 0);
  expect_index(&view, RUXMETA_CLASS_TableData, RUXMETA_NOTHING, 0);
  expect_index(&view, 0, RUXMETA_NOTHING, 0);
  expect_index(&view, 0xFFFFFFFF, RUXMETA_NOTHING, 0);
}

/* Several models at once, each made in another way. */
static void test_several(const char* meta) {
  static char bytes[1 << 20];
  FILE* const file = fopen(meta, "rb");
  const size_t size = file != NULL ? fread(bytes, 1, sizeof bytes, file) : 0;
  ruxmeta_model* models[3] = {NULL, NULL, NULL};
  size_t i;
  EXPECT(file != NULL && fclose(file) == 0 && size > 0 && size < sizeof bytes);
  EXPECT(ruxmeta_open(meta, &models[0], NULL) == RUXMETA_OK);
  EXPECT(ruxmeta_load(meta, &models[1], NULL) == RUXMETA_OK);
  EXPECT(ruxmeta_open_bytes(bytes, size, &models[2], NULL) == RUXMETA_OK);
  for (i = 0; i < 3; ++i) {
    test_beyond(models[i]);
    test_text(models[i]);
    test_view(models[i]);
  }
  for (i = 0; i < 3; ++i) {
    ruxmeta_close(models[i]);
    if (i < 2) test_beyond(models[i + 1]);
  }
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  test_nothing();
  test_opening(argv[1], argv[2]);
  test_statuses();
  test_several(argv[1]);
  return failures == 0 ? 0 : 1;
}
