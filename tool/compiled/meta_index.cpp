#include "tool/compiled/meta_index.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "ruxcomp/identifiers.h"
#include "tool/compiled/keywords.h"

namespace rux {
namespace {

struct IndexClass {
  std::uint32_t base;
  const char* name;
  Datum::Class is;
  const char* prefix;  // that a script puts before names of the class
};

constexpr IndexClass kIndexClasses[] = {
    {RUX_CLASS_Property, "property", Datum::Class::kName, ""},
    {RUX_CLASS_Global, "global", Datum::Class::kGlobal, "G_"},
    {RUX_CLASS_Value, "value", Datum::Class::kValue, "VALUE_"},
    {RUX_CLASS_Repeater, "repeater", Datum::Class::kName, ""},
    {RUX_CLASS_Dword, "number", Datum::Class::kNumber, ""},
    {RUX_CLASS_String, "string", Datum::Class::kString, ""},
    {RUX_CLASS_Group, "group", Datum::Class::kGroup, ""},
    {RUX_CLASS_Action, "action", Datum::Class::kAction, ""},
    {RUX_CLASS_TableName, "table", Datum::Class::kTable, ""},
    {RUX_CLASS_TableData, "cells", Datum::Class::kUnresolved, ""},
    {RUX_CLASS_Small, "argument", Datum::Class::kArgument, "ARG"},
    {RUX_CLASS_ValueType, "type", Datum::Class::kType, ""},
    {RUX_CLASS_Operator, "operator", Datum::Class::kOperator, ""},
};

const IndexClass* FindClass(std::uint32_t index) {
  const auto row =
      std::find_if(std::begin(kIndexClasses), std::end(kIndexClasses),
                   [&](const IndexClass& each) { return each.base == ClassOfIndex(index); });
  return row == std::end(kIndexClasses) ? nullptr : row;
}

std::string OperatorText(std::uint32_t code) {
#define OPERATOR(text, operator_code) \
  if (code == (operator_code)) return text;
#include "ruxcomp/operators.def"
  return fmt::format("(operator {})", code);
}

Datum NameAt(const CompiledTable& table, const IndexClass& row, std::uint32_t ordinal) {
  if (ordinal >= table.texts.size()) return {};
  const std::string& name = table.texts[ordinal];
  // The value without a name is just VALUE.
  if (row.is == Datum::Class::kValue && name.empty()) return {row.is, ordinal, "VALUE"};
  return {row.is, ordinal, row.prefix + name};
}

}  // namespace

const char* IndexClassName(std::uint32_t index) {
  const IndexClass* row = FindClass(index);
  return row == nullptr ? nullptr : row->name;
}

const CompiledTable* TableOf(const CompiledMeta& meta, std::uint32_t base) {
  const auto found = std::find_if(meta.tables.begin(), meta.tables.end(),
                                  [&](const CompiledTable& table) { return table.base == base; });
  return found == meta.tables.end() ? nullptr : &*found;
}

Datum Resolve(const CompiledMeta& meta, std::uint32_t index) {
  const IndexClass* row = FindClass(index);
  if (row == nullptr) return {};
  const std::uint32_t ordinal = OrdinalOfIndex(index);
  switch (row->is) {
    case Datum::Class::kArgument:
      return {row->is, ordinal, fmt::format("ARG{}", ordinal)};
    case Datum::Class::kType:
      return {row->is, ordinal, {}};
    case Datum::Class::kOperator:
      return {row->is, ordinal, OperatorText(ordinal)};
    default:
      break;
  }
  const CompiledTable* table = TableOf(meta, row->base);
  if (table == nullptr) return {};
  if (row->is != Datum::Class::kNumber) return NameAt(*table, *row, ordinal);
  if (ordinal >= table->numbers.size()) return {};
  return {row->is, table->numbers[ordinal], {}};
}

std::string KeyOf(const CompiledMeta& meta, const CompiledSection& section,
                  const CompiledEntry& entry) {
  if (const char* keyword = CompiledEntryKeyword(entry.identifier)) return keyword;
  const bool is_prefixed = ClassOfIndex(entry.identifier) == RUX_CLASS_Property &&
                           section.identifier != RUX_SECT_PROPERTY;
  const Datum name = Resolve(meta, entry.identifier);
  return is_prefixed && name.is == Datum::Class::kName ? "P_" + name.text : name.text;
}

}  // namespace rux
