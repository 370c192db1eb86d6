#include "docs/tables/c_header.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>

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
  header += "\n/* How many cells a table has. */\nenum { RUXMETA_TABLE_CELLS = " +
            std::to_string(kTableCells) + " };\n";
  return header + "\n#endif /* RUXMETA_NUMBERS_H_ */\n";
}
