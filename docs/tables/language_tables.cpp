// Prints a table of the language: a line for each row, its cells separated by tabs, "-" for a cell
// that says nothing.
//
//   language_tables TABLE
//   language_tables c-header   numbers by name, as include/ruxmeta/numbers.h
//   language_tables python     all of them as python/ruxmeta/_language.py
//   language_tables profile-schema   docs/profile.schema.json
//
//   sections       keyword, source identifier, compiled identifier, form, naming, uniqueness
//   keys           section; key, prefix or any; the key; required or optional; payload
//   entries        name, keyword, source identifier, compiled identifier, symbol table, payload
//   value-types    code, least parts, most parts, keeps-surplus, then for each field
//                  name, text or list, role
//   operators      text, code, arithmetic or comparison
//   selectors      value type, part, name, code, least values, most values, first, last
//   last-errors    code, name, sentence
//   symbol-tables  class byte, name
//   profile        member, what it decides, what it can be, what the language says
//   type-meanings  meaning, codes of types, what it does
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "docs/tables/c_header.h"
#include "docs/tables/profile_tables.h"
#include "docs/tables/python_module.h"
#include "docs/tables/words.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/last_errors.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/selectors.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace {

using namespace ruxcomp::language;

using Cells = std::vector<std::string>;

void Print(const Cells& cells) {
  std::string line;
  for (const std::string& cell : cells) {
    if (!line.empty()) line += '\t';
    line += cell.empty() ? "-" : cell;
  }
  std::puts(line.c_str());
}

std::string Hex(std::uint32_t number, int digits) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%0*X", digits, number);
  return text;
}
std::string Identifier(std::uint32_t number) { return number != 0 ? Hex(number, 8) : ""; }

std::string Count(std::uint32_t number) {
  return number == kAnyNumber ? "any" : std::to_string(number);
}

void PrintSections() {
  for (const SectionKind& kind : kSectionKinds) {
    Print({kind.keyword, Identifier(kind.source), Identifier(kind.IsCompiled() ? kind.compiled : 0),
           WordFor(kind.form), WordFor(kind.naming), WordFor(kind.uniqueness)});
  }
}

void PrintKey(const SectionKind& kind, EntryId entry, Notation notation) {
  const EntryRow& row = *FindEntryRow(entry);
  const std::string_view keyword = row.keyword;
  std::string how = "key";
  if ((notation & kFreeName) != 0) how = keyword.empty() ? "any" : "prefix";
  Print({kind.keyword, how, row.keyword, (notation & kRequired) != 0 ? "required" : "optional",
         WordFor(row.payload)});
}

void PrintKeys() {
  for (const SectionKind& kind : kSectionKinds) {
    for (const auto& row : kind.templates) PrintKey(kind, row.identifier, row.notation);
    for (const auto& row : kind.free_entries) PrintKey(kind, row.identifier, row.notation);
  }
}

std::string TableName(std::uint32_t base) {
  const Block* block = FindRow(kBlocks, [&](const Block& row) { return row.base == base; });
  return block != nullptr ? block->name : "";
}

void PrintEntries() {
  for (const EntryRow& row : kEntries) {
    Print({row.name, row.keyword, Identifier(row.source), Identifier(row.compiled),
           TableName(row.table), WordFor(row.payload)});
  }
}

void PrintValueType(const ValueType& type) {
  Cells cells = {std::to_string(type.code), Count(type.least), Count(type.most),
                 type.Has(kKeepsSurplus) ? "keeps-surplus" : ""};
  const Rows<Field> fields = FieldsOfShape(type.shape);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    cells.emplace_back(fields[i].name);
    cells.emplace_back(fields[i].kind == FieldKind::kList ? "list" : "text");
    cells.emplace_back(WordFor(type.roles[i]));
  }
  Print(cells);
}

void PrintValueTypes() {
  for (const ValueType& type : kValueTypes) {
    PrintValueType(type);
    if (type.code == kComparison.code) PrintValueType(kComparison);
  }
}

void PrintOperators() {
  for (const Operator& row : kOperators) {
    Print({std::string(row.text), std::to_string(row.code),
           IsComparison(row.code) ? "comparison" : "arithmetic"});
  }
}

void PrintSelectors() {
  for (const SelectorRow& row : kSelectorRows) {
    Print({row.type == kRepeaterType ? "repeater" : std::to_string(row.type), row.part, row.name,
           Identifier(row.selector), Count(row.least), Count(row.most), std::to_string(row.first),
           row.last == kLastValue ? "last" : std::to_string(row.last)});
  }
}

void PrintLastErrors() {
  for (const LastError& row : kLastErrors) {
    Print({std::to_string(row.code), row.name, row.sentence});
  }
}

void PrintSymbolTables() {
  for (std::size_t i = 0; i < kSymbolTableCount; ++i) {
    Print({Hex(kBlocks[i].base >> kClassShift, 2), kBlocks[i].name});
  }
}

void PrintCHeader() { std::fputs(CHeader().c_str(), stdout); }

void PrintProfile() {
  for (const Cells& row : ProfileRows()) Print(row);
}

void PrintTypeMeanings() {
  for (const Cells& row : MeaningRows()) Print(row);
}

void PrintProfileSchema() { std::fputs(ProfileSchema().c_str(), stdout); }

void PrintPython() { std::fputs(PythonModule().c_str(), stdout); }

constexpr struct {
  std::string_view name;
  void (*print)();
} kTables[] = {
    {"sections", PrintSections},
    {"keys", PrintKeys},
    {"entries", PrintEntries},
    {"value-types", PrintValueTypes},
    {"operators", PrintOperators},
    {"selectors", PrintSelectors},
    {"last-errors", PrintLastErrors},
    {"symbol-tables", PrintSymbolTables},
    {"c-header", PrintCHeader},
    {"python", PrintPython},
    {"profile", PrintProfile},
    {"type-meanings", PrintTypeMeanings},
    {"profile-schema", PrintProfileSchema},
};

}  // namespace

int main(int count, char** arguments) {
  for (const auto& table : kTables) {
    if (count != 2 || table.name != arguments[1]) continue;
    table.print();
    return 0;
  }
  std::fputs("usage: language_tables TABLE\n", stderr);
  return 2;
}
