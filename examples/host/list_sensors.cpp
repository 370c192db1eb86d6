// Lists the sensors of a meta file with their thresholds:
//
//   list_sensors server.meta
//
// What a daemon does first with the library: load a meta file, walk its sections, look values up.
// Built outside this tree it needs the public headers and the library, nothing else.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "ruxcomp/ruxcomp.h"

// Every host gives the library a place for its messages. They come from compiling scripts, and from
// loading the library where the reader of scripts is not installed: a program that only queries has
// no use for either.
extern "C" RUX_API void Output(unsigned int /*size*/, const char* /*format*/, ...) {}

namespace {

struct Column {
  const char* title;
  std::uint32_t entry;
};

constexpr std::array<Column, 6> kColumns = {{
    {"ID", RUX_ENTRY_ID},
    {"NAME", RUX_ENTRY_NAME},
    {"FL", RUX_ENTRY_THRESHOLD_FL},
    {"WL", RUX_ENTRY_THRESHOLD_WL},
    {"WH", RUX_ENTRY_THRESHOLD_WH},
    {"FH", RUX_ENTRY_THRESHOLD_FH},
}};

using Row = std::array<std::string, kColumns.size()>;

const char* Sentence(std::uint32_t code) {
  switch (code) {
#define LAST_ERROR(name, number, sentence) \
  case number:                             \
    return sentence;
#include "ruxcomp/language/last_errors.def"
    default:
      return "unknown error";
  }
}

// The first value of a section's entry as text; "-" when the script does not say.
std::string CellText(GCSECTION section, std::uint32_t entry) {
  const tagTBLDATA value = gcGetValueByIndex(gcGetEntryByType(section, entry), 0);
  if (value.kind == RUX_DATA_STRING) return value.data.string;
  if (value.kind != RUX_DATA_NUMBER) return "-";
  // Numbers in a file have no sign; thresholds may be below 0.
  if (entry != RUX_ENTRY_ID) return std::to_string(static_cast<std::int32_t>(value.data.number));
  char text[16];
  std::snprintf(text, sizeof text, "0x%X", value.data.number);
  return text;
}

std::vector<Row> SensorRows() {
  std::vector<Row> rows(gcGetSectCount(RUX_SECT_SENSOR));
  for (std::uint32_t i = 0; i < rows.size(); ++i) {
    const GCSECTION sensor = gcGetSectByIndex(RUX_SECT_SENSOR, i);
    std::transform(kColumns.begin(), kColumns.end(), rows[i].begin(),
                   [sensor](const Column& column) { return CellText(sensor, column.entry); });
  }
  return rows;
}

// ID and NAME are aligned left in their columns, numbers right.
void PrintTable(const std::vector<Row>& rows) {
  Row titles;
  std::transform(kColumns.begin(), kColumns.end(), titles.begin(),
                 [](const Column& column) { return column.title; });

  std::array<int, kColumns.size()> widths{};
  const auto widen = [&widths](const Row& row) {
    for (std::size_t c = 0; c < row.size(); ++c)
      widths[c] = std::max(widths[c], static_cast<int>(row[c].size()));
  };
  widen(titles);
  std::for_each(rows.begin(), rows.end(), widen);

  const auto print = [&widths](const Row& row) {
    std::printf("%-*s  %-*s", widths[0], row[0].c_str(), widths[1], row[1].c_str());
    for (std::size_t c = 2; c < row.size(); ++c) std::printf("  %*s", widths[c], row[c].c_str());
    std::printf("\n");
  };
  print(titles);
  std::for_each(rows.begin(), rows.end(), print);
  std::printf("%zu sensor%s\n", rows.size(), rows.size() == 1 ? "" : "s");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: list_sensors META\n");
    return 2;
  }
  if (!gcInit(argv[1])) {
    const std::uint32_t code = gcGetLastError();
    std::fprintf(stderr, "%s: error %u: %s\n", argv[1], code, Sentence(code));
    return 1;
  }
  PrintTable(SensorRows());
  gcUnInit();
  // A table that got lost on the way must not look like one: a full disk shows here at the latest.
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    std::fprintf(stderr, "cannot write the table\n");
    return 1;
  }
  return 0;
}
