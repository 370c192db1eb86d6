#include "docs/tables/python_module.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "docs/tables/words.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/selectors.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace {

using namespace ruxcomp::language;

// No text of the language needs more.
std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c == '\0' ? std::string("\\0") : std::string(1, c);
  }
  return quoted + '"';
}
std::string Bytes(std::string_view text) { return 'b' + Quoted(text); }

std::string Number(std::uint64_t number) { return std::to_string(number); }

std::string Hex(std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", number);
  return text;
}

std::string Truth(bool is_true) { return is_true ? "True" : "False"; }

std::string Joined(const std::vector<std::string>& items, const char* separator) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : separator) + item;
  return text;
}

using Items = std::vector<std::string>;

std::string Call(const char* type, const Items& arguments) {
  return std::string(type) + '(' + Joined(arguments, ", ") + ')';
}

// Each item on a line of its own, indented by that many columns and four.
std::string Tuple(const Items& items, std::size_t indent = 0) {
  if (items.empty()) return "()";
  const std::string margin(indent, ' ');
  const std::string separator = ",\n    " + margin;
  return "(\n    " + margin + Joined(items, separator.c_str()) + ",\n" + margin + ')';
}

template <class Table, class Text>
Items Each(const Table& table, Text text) {
  Items items;
  for (const auto& row : table) items.push_back(text(row));
  return items;
}

std::string Constant(const char* name, const std::string& value) {
  return std::string(name) + " = " + value + '\n';
}

// The kind of the sections that the entry refers to by their IDs.
std::string TargetOf(const EntryTemplate& row) {
  const Reference* reference = FindReference(row.section, row.identifier);
  const bool is_id = reference != nullptr && reference->key == ENTRY_ID;
  return is_id ? KindOf(reference->target).keyword : "";
}

std::string TemplateText(const SectionKind& kind, std::size_t place) {
  const EntryTemplate& row = kind.templates[place];
  const std::uint32_t entry = row.identifier;
  if (!kind.IsCompiled()) {
    return Call("Template", {Hex(entry), Number(row.notation), "0", "\"\"", "\"\""});
  }
  const CompiledEntry& compiled = CompiledEntriesOf(kind)[place];
  return Call("Template", {Hex(entry), Number(row.notation), Hex(compiled.identifier),
                           Quoted(WordFor(compiled.content)), Quoted(TargetOf(row))});
}

std::string KindText(const SectionKind& kind) {
  Items templates;
  for (std::size_t i = 0; i < kind.templates.size(); ++i) {
    templates.push_back(TemplateText(kind, i));
  }
  const Items free_entries = Each(kind.free_entries, [](const FreeEntryRule& row) {
    const EntryRow& entry = *FindEntryRow(row.identifier);
    return Call("FreeEntry", {Hex(row.identifier), Number(row.notation), Hex(entry.table),
                              Quoted(WordFor(ContentOfNamed(entry.table)))});
  });
  return Call("Kind",
              {Quoted(kind.keyword), Hex(kind.source), Hex(kind.IsCompiled() ? kind.compiled : 0),
               Number(kind.notation), Quoted(WordFor(kind.uniqueness)), Tuple(templates, 4),
               Tuple(free_entries, 4)});
}

std::string EntryText(const EntryRow& row) {
  return Call("EntryRow",
              {Quoted(row.name), Quoted(row.keyword), Hex(row.source), Hex(row.compiled),
               Quoted(WordFor(NameFormOf(row.source))), Truth(FindLimit(row.source) != nullptr)});
}

std::string ClassText(const ClassRow& row) {
  const Items keys =
      Each(FixedKeysOf(row.base), [](const FixedKey& key) { return Bytes(key.text); });
  const Rows<KeySource> sources = KeySourcesOf(row.base);
  const bool is_text = !sources.empty() && sources[0].is_text;
  return Call("IndexClass", {Hex(row.base), Quoted(row.title), Quoted(row.prefix),
                             keys.empty() ? "()" : '(' + Joined(keys, ", ") + ",)",
                             Quoted(is_text ? KindOf(sources[0].section).keyword : "")});
}

std::string FieldsText(const ValueType& type) {
  Items fields;
  for (std::size_t i = 0; i < type.fields.size(); ++i) {
    const Field& field = type.fields[i];
    fields.push_back(Call("Field", {Quoted(field.name), Truth(field.kind == FieldKind::kList),
                                    Quoted(WordFor(type.roles[i]))}));
  }
  return Tuple(fields, 4);
}

std::string TypeText(const ValueType& type) {
  return Call("ValueType", {Number(type.code), Number(type.least), Number(type.MostKept()),
                            Truth(type.Has(kForwardsArguments)), FieldsText(type)});
}

std::string SelectorText(const SelectorRow& row) {
  return Call("SelectorRow", {Quoted(row.part), Hex(row.type), Number(row.least), Number(row.most),
                              Hex(row.selector), Number(row.first), Number(row.last)});
}

std::string SelectorClass() {
  std::string text =
      "\n\nclass Selector:\n"
      "    \"\"\"What Entry.select() picks; + 1, 2, ... for the first, second, ... item of a "
      "group.\"\"\"\n\n";
#define SELECTOR_CODE(name, code) text += "    " #name " = " + Hex(SELECT_##name) + '\n';
#include "ruxcomp/language/selectors.def"
  return text;
}

std::string FileFormat() {
  using ruxcomp::file::Form;
  using ruxcomp::file::MagicOf;
  return Constant("META_MAGIC", Bytes(MagicOf(Form::kMeta))) +
         Constant("DEBUG_META_MAGIC", Bytes(MagicOf(Form::kDebugMeta))) +
         Constant("FORMAT_VERSION", Hex(ruxcomp::file::kVersion)) +
         Constant("VERSION_OFFSET", Number(ruxcomp::file::kVersionOffset)) +
         Constant("HEADER_END", Number(ruxcomp::file::kHeaderEnd)) +
         Constant("SECTIONS_OFFSET", Number(meta_format::kSectionsOffset)) +
         Constant("BLOCK_ALIGNMENT", Number(meta_format::kBlockAlignment)) +
         Constant("MOST_FILE_BYTES", Number(ruxcomp::file::kMostFileBytes)) +
         Constant("MOST_ORDINALS", Number(kMostOrdinals)) +
         Constant("TABLE_CELLS", Number(kTableCells)) + Constant("ANY_NUMBER", Number(kAnyNumber));
}

std::string Classes() {
  std::string text;
#define CLASS_CONSTANT(name) text += "CLASS_" #name " = " + Hex(CLASS_##name) + '\n';
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) CLASS_CONSTANT(name)
#define CELLS_CLASS(name, class_byte, title) CLASS_CONSTANT(name)
#define IMMEDIATE_CLASS(name, class_byte, title, prefix) CLASS_CONSTANT(name)
#include "ruxcomp/language/symbol_tables.def"
#undef CLASS_CONSTANT
  return text;
}

std::string Payloads() {
  return Constant("PAYLOAD_MASK", Hex(kPayloadMask)) +
         Constant("PAYLOAD_NUMBER", Hex(PAYLOAD_DWORD)) +
         Constant("PAYLOAD_TEXT", Hex(PAYLOAD_STRING)) +
         Constant("PAYLOAD_LIST", Hex(PAYLOAD_STRINGLIST)) +
         Constant("PAYLOAD_VALUE", Hex(PAYLOAD_VALUE)) + Constant("REQUIRED", Number(kRequired)) +
         Constant("FREE_NAME", Number(kFreeName));
}

std::string Spelling() {
  return Constant("PROPERTY_PREFIX", Quoted(kPropertyPrefix)) +
         Constant("PLAIN_VALUE", Quoted(kPlainValue));
}

}  // namespace

std::string PythonModule() {
  std::string text =
      "\"\"\"The language of scripts and both file formats: the lists of "
      "include/ruxcomp/language.\n"
      "\n"
      "Generated by language_tables; python/language.sh --update writes it.\n"
      "\"\"\"\n\n"
      "from ruxmeta._rows import (\n"
      "    EntryRow,\n    Field,\n    FreeEntry,\n    IndexClass,\n    Kind,\n    SelectorRow,\n"
      "    Template,\n    ValueType,\n)\n\n";
  text += FileFormat() + '\n' + Classes() + '\n' + Payloads() + '\n' + Spelling() + '\n';
  text += Constant("KINDS", Tuple(Each(kSectionKinds, KindText)));
  text += Constant("ENTRIES", Tuple(Each(kEntries, EntryText)));
  text += Constant("CLASSES", Tuple(Each(kClasses, ClassText)));
  text += Constant("BLOCKS", Tuple(Each(kBlocks, [](const Block& row) { return Hex(row.base); })));
  text += Constant("VALUE_TYPES", Tuple(Each(kValueTypes, TypeText)));
  text += Constant("COMPARISON", TypeText(kComparison));
  text += Constant("NO_RECORD", TypeText(kNoRecord));
  text += Constant("FIRST_COMPARISON", Number(kFirstComparison));
  text += Constant("REPEATER_FIELDS", FieldsText(kRepeaterRecord));
  text += Constant("OPERATORS", Tuple(Each(kOperators, [](const Operator& row) {
                     return '(' + Bytes(row.text) + ", " + Number(row.code) + ')';
                   })));
  text += Constant("REPEATER_TYPE", Hex(kRepeaterType));
  text += Constant("SELECTORS", Tuple(Each(kSelectorRows, SelectorText)));
  return text + SelectorClass();
}
