// Prints the rows of a table of the manual, from the lists that the library is made of.
//
//   tables WHAT
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "compiled/value_shape.h"
#include "frontend/section_schema.h"
#include "frontend/value_types.h"
#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/output.h"

extern "C" RUX_API void Output(unsigned int, const char*, ...) {}

namespace {

std::string Code(const std::string& text) { return '`' + text + '`'; }

std::string Hex(std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", number);
  return Code(text);
}

// A bar would end the cell.
std::string Escaped(std::string text) {
  for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2) {
    text.insert(at, "\\");
  }
  return text;
}

void Row(std::initializer_list<std::string> cells) {
  for (const std::string& cell : cells) std::printf("| %s ", cell.c_str());
  std::printf("\n");
}

// How the manual calls the kinds of payload, and the numeric among them.
std::string PayloadText(std::uint32_t identifier) {
  const bool numeric = (identifier & 0xF000) == 0x8000;
  switch (identifier & 0xFFFF0000) {
    case 0x10010000:
      return "number";
    case 0x10020000:
      return numeric ? "number" : "text";
    case 0x10040000:
      return numeric ? "numbers" : "texts";
    case 0x10080000:
      return "value";
    default:
      return "repeat";
  }
}

std::string KeywordOf(std::uint32_t identifier) {
  for (std::uint32_t i = 0; i < g_dwNTMEntry; ++i) {
    if (g_NTMapEntry[i].identifier == identifier) return g_NTMapEntry[i].keyword;
  }
  return "";
}

// An entry whose key is the script's to choose: "any (table row)".
std::string FreeName(std::string name) {
  for (char& c : name) c = c == '_' ? ' ' : static_cast<char>(std::tolower(c));
  return "any (" + name + ')';
}

void Sections() {
#define SECTION(keyword, kind, notation)                 \
  Row({Code("[" #keyword "]"), Hex(0x20000000 + (kind)), \
       (kind) < 12 ? Hex(0x01000000 + (kind)) : "-"});
#include "ruxcomp/sections.def"
}

void Entries() {
#define FIXED_ENTRY(name, keyword, identifier, compiled) \
  Row({Code(keyword), Hex(identifier), Hex(compiled)});
#define NAMED_ENTRY(name, keyword, identifier, table, prefix) \
  Row({*(keyword) ? Code(keyword) : FreeName(#name), Hex(identifier), "index in `" #table "`"});
#define PLAIN_ENTRY(name, keyword, identifier) \
  Row({*(keyword) ? Code(keyword) : FreeName(#name), Hex(identifier), "-"});
#include "ruxcomp/entries.def"
}

// What a section of that keyword knows.
void Keys(const char* section) {
  std::uint32_t kind = 0;
#define SECTION(keyword, number, notation) \
  if (std::strcmp(section, #keyword) == 0) kind = 0x20000000 + (number);
#include "ruxcomp/sections.def"
  const SectionSchema& schema = SchemaOf(static_cast<SectionId>(kind));
  for (const EntryTemplate& row : schema.templates) {
    Row({Code(KeywordOf(row.identifier)), (row.notation & 1) != 0 ? "required" : "optional",
         PayloadText(row.identifier)});
  }
  for (const FreeEntryRule& rule : schema.freeEntries) {
    const std::string prefix = KeywordOf(rule.identifier);
    Row({prefix.empty() ? (schema.templates.size() == 0 ? "any" : "any other")
                        : Code(prefix) + "...",
         "optional", PayloadText(rule.identifier)});
  }
}

void Operators() {
#define OPERATOR(text, code) \
  Row({Code(Escaped(text)), #code, (code) > 100 ? "comparison" : "arithmetic"});
#include "ruxcomp/operators.def"
}

std::string PartText(const rux::compiled::ShapePart& part) {
  switch (part.role) {
    case rux::compiled::Role::kOperand:
      return part.name;
    case rux::compiled::Role::kNumber:
      return std::string(part.name) + " (number)";
    case rux::compiled::Role::kLocalValue:
      return std::string(part.name) + " (value)";
    case rux::compiled::Role::kAction:
      return std::string(part.name) + " (action)";
    case rux::compiled::Role::kTable:
      return std::string(part.name) + " (table)";
    case rux::compiled::Role::kOperator:
      return part.name;
  }
  return "";
}

void ValueTypes() {
  for (std::uint32_t code = 0; code < 106; ++code) {
    const ValueType& type = FindValueType(code);
    if (type.code != code) continue;
    const rux::compiled::ValueShape& shape = rux::compiled::ShapeOf(code);
    std::string parts;
    for (const rux::compiled::ShapePart& part : shape.texts) {
      parts += (parts.empty() ? "" : ", ") + PartText(part);
    }
    if (shape.list.name != nullptr) {
      parts += std::string(parts.empty() ? "" : ", ") + shape.list.name + " ...";
    }
    std::string counts = std::to_string(type.least);
    if (code == rux::compiled::kCalculation) counts += " or " + std::to_string(kComparison.least);
    if (type.most == kAnyNumber) counts += " or more";
    if (type.most != kAnyNumber && type.most != type.least) {
      counts += " to " + std::to_string(type.most);
    }
    if (type.keepsSurplus) counts += " or more, warned of beyond";
    Row({std::to_string(code), parts.empty() ? "-" : parts, counts});
  }
}

void LastErrors() {
#define LAST_ERROR(name, code, sentence) Row({#code, Code("RUX_ERROR_" #name), sentence});
#include "ruxcomp/last_errors.def"
}

// What the library and its reader say, without the line feed.
void Texts() {
  const auto row = [](std::string text, const char* id) {
    if (text.empty()) return;
    text.pop_back();
    Row({Code(Escaped(text)), Code(id)});
  };
#define ROW(name, id, severity, text, summary, explanation, wrong, right) row(text, id);
#include "diagnostics/messages/message_rows.def"
}

void SymbolTables() {
#define SYMBOL_TABLE(name, class_byte, key) \
  Row({Code(#class_byte), Code("g_tbl" #name), Code("RUX_CLASS_" #name)});
#include "ruxcomp/symbol_tables.def"
}

// Types with the same selectors share rows.
void Selectors() {
  constexpr std::uint32_t any = 0xFFFFFFFF;
  struct Selector {
    std::string types, part, name;
    std::uint32_t code, least, most, first, last;
  };
  std::vector<Selector> rows;
  const auto add = [&rows](Selector row) {
    const auto same = std::find_if(rows.begin(), rows.end(), [&row](const Selector& other) {
      return other.code == row.code && other.least == row.least && other.most == row.most &&
             other.first == row.first;
    });
    if (same == rows.end()) return rows.push_back(std::move(row));
    same->types += ", " + row.types;
  };
  const auto range = [](std::uint32_t from, std::uint32_t to, const char* open_end) {
    if (from == to) return std::to_string(from);
    return std::to_string(from) + (to == any ? open_end : " to " + std::to_string(to));
  };
#define SELECTOR_ANY any
#define SELECTOR_REPEATER any
#define SELECTOR(part, type, least, most, selector, first, last)                                  \
  add({(type) == any ? "repeater" : std::to_string(type), part, Code(#selector), selector, least, \
       most, first, last});
#include "ruxcomp/selectors.def"
  for (const Selector& row : rows) {
    Row({row.types, row.part, row.name, Hex(row.code), range(row.least, row.most, " or more"),
         range(row.first, row.last, " to last")});
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string what = argv[1];
  if (what == "sections") Sections();
  if (what == "entries") Entries();
  if (what == "operators") Operators();
  if (what == "value types") ValueTypes();
  if (what == "last errors") LastErrors();
  if (what == "texts") Texts();
  if (what == "symbol tables") SymbolTables();
  if (what == "selectors") Selectors();
  if (what.rfind("keys of ", 0) == 0) Keys(argv[1] + 8);
}
