#include "docs/tables/c_header.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace {

using namespace ruxcomp::language;

// An enum: C has no other constants that a switch can have.
class Enum {
 public:
  Enum(std::string& header, const char* comment, std::string prefix)
      : header_(header), prefix_(std::move(prefix)) {
    header_.append("\n/* ").append(comment).append(" */\nenum {\n");
  }
  ~Enum() { header_ += "\n};\n"; }
  Enum(const Enum&) = delete;
  Enum& operator=(const Enum&) = delete;

  void Add(const char* name, std::uint32_t number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "0x%08X", number);
    header_ += is_empty_ ? "" : ",\n";
    header_.append("  RUXMETA_").append(prefix_).append(name).append(" = ").append(digits);
    is_empty_ = false;
  }

 private:
  std::string& header_;
  const std::string prefix_;
  bool is_empty_ = true;
};

// How an index is taken apart, and what IsImmediate() is in C.
void AddIndices(std::string& header) {
  char mask[16];
  std::snprintf(mask, sizeof mask, "0x%08X", kOrdinalMask);
  header +=
      "\n/* An index is a class, and an ordinal in its low bits. */\nenum { RUXMETA_CLASS_SHIFT "
      "= " +
      std::to_string(kClassShift) + ", RUXMETA_ORDINAL_MASK = " + mask + " };\n";
  header +=
      "\n/* Whether the indices of a class carry their own value: the ordinal. */\n"
      "/* clang-format off */\n";
  std::vector<std::string> lines = {"#define RUXMETA_IS_IMMEDIATE(index_class)"};
  const char* before = "  (";
#define IMMEDIATE_CLASS(name, class_byte, title, prefix)                                \
  lines.push_back(std::string(before) + "(index_class) == RUXMETA_CLASS_" #name " ||"); \
  before = "   ";
#include "ruxcomp/language/symbol_tables.def"
  lines.back().replace(lines.back().size() - 3, 3, ")");
  std::size_t width = 0;
  for (const std::string& line : lines) width = std::max(width, line.size());
  for (const std::string& line : lines) {
    header += line;
    if (&line != &lines.back()) header.append(width - line.size(), ' ').append(" \\");
    header += '\n';
  }
  header += "/* clang-format on */\n";
}

}  // namespace

std::string CHeader() {
  std::string header = R"(/* The numbers of meta files, by name. Made of the tables of the language:
 *
 *   language_tables c-header > include/ruxmeta/numbers.h
 */
#ifndef RUXMETA_NUMBERS_H_
#define RUXMETA_NUMBERS_H_
)";
  {
    Enum sections(header, "Kinds of sections.", "SECTION_");
    for (const SectionKind& kind : kSectionKinds) {
      if (kind.IsCompiled()) sections.Add(kind.keyword, kind.compiled);
    }
  }
  {
    Enum entries(header, "Entries with a fixed key. Any other has the index of its name.",
                 "ENTRY_");
    for (const EntryRow& row : kEntries) {
      if (row.compiled != 0) entries.Add(row.name, row.compiled);
    }
  }
  {
    Enum selectors(header, "Parts of values, for ruxmeta_entry_part().", "SELECT_");
#define SELECTOR_CODE(name, code) selectors.Add(#name, code);
#include "ruxcomp/language/selectors.def"
  }
  {
    Enum classes(header, "Classes of indices.", "CLASS_");
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) classes.Add(#name, CLASS_##name);
#define CELLS_CLASS(name, class_byte, title) classes.Add(#name, CLASS_##name);
#define IMMEDIATE_CLASS(name, class_byte, title, prefix) classes.Add(#name, CLASS_##name);
#include "ruxcomp/language/symbol_tables.def"
  }
  AddIndices(header);
  header += "\n/* How many cells a table has. */\nenum { RUXMETA_TABLE_CELLS = " +
            std::to_string(kTableCells) + " };\n";
  return header + "\n#endif /* RUXMETA_NUMBERS_H_ */\n";
}
