#include "compiled/index_class.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "compiled/keywords.h"
#include "ruxcomp/identifiers.h"

namespace rux::compiled {
namespace {

struct IndexClass {
  std::uint32_t base;
  Datum::Class is;
  const char* name;
  const char* prefix;  // that a script puts before names of the class
};

constexpr char kPropertyPrefix[] = "P_";
constexpr char kPlainValue[] = "VALUE";  // the value without a name

constexpr IndexClass kIndexClasses[] = {
    {RUX_CLASS_Property, Datum::Class::kName, "property", ""},
    {RUX_CLASS_Global, Datum::Class::kGlobal, "global", "G_"},
    {RUX_CLASS_Value, Datum::Class::kValue, "value", "VALUE_"},
    {RUX_CLASS_Repeater, Datum::Class::kName, "repeater", ""},
    {RUX_CLASS_Dword, Datum::Class::kNumber, "number", ""},
    {RUX_CLASS_String, Datum::Class::kString, "string", ""},
    {RUX_CLASS_Group, Datum::Class::kGroup, "group", ""},
    {RUX_CLASS_Action, Datum::Class::kAction, "action", ""},
    {RUX_CLASS_TableName, Datum::Class::kTable, "table", ""},
    {RUX_CLASS_TableData, Datum::Class::kUnresolved, "cells", ""},
    {RUX_CLASS_Small, Datum::Class::kArgument, "argument", "ARG"},
    {RUX_CLASS_ValueType, Datum::Class::kType, "type", ""},
    {RUX_CLASS_Operator, Datum::Class::kOperator, "operator", ""},
};

const IndexClass* FindClass(std::uint32_t index) {
  const auto* const row =
      std::find_if(std::begin(kIndexClasses), std::end(kIndexClasses),
                   [&](const IndexClass& each) { return each.base == ClassOfIndex(index); });
  return row == std::end(kIndexClasses) ? nullptr : row;
}

std::string OperatorText(std::uint32_t code) {
#define OPERATOR(text, operator_code) \
  if (code == (operator_code)) return text;
#include "ruxcomp/language/operators.def"
  return fmt::format("(operator {})", code);
}

}  // namespace

const char* IndexClassName(std::uint32_t index) {
  const IndexClass* row = FindClass(index);
  return row == nullptr ? nullptr : row->name;
}

std::optional<Datum> ImmediateDatum(std::uint32_t index) {
  const std::uint32_t ordinal = OrdinalOfIndex(index);
  switch (ClassOfIndex(index)) {
    case RUX_CLASS_Small:
      return Datum{Datum::Class::kArgument, ordinal, fmt::format("ARG{}", ordinal)};
    case RUX_CLASS_ValueType:
      return Datum{Datum::Class::kType, ordinal, {}};
    case RUX_CLASS_Operator:
      return Datum{Datum::Class::kOperator, ordinal, OperatorText(ordinal)};
    default:
      return std::nullopt;
  }
}

Datum TextDatum(std::uint32_t index, const std::string& text) {
  const IndexClass* row = FindClass(index);
  if (row == nullptr) return {};
  const bool is_plain = row->is == Datum::Class::kValue && text.empty();
  return {row->is, OrdinalOfIndex(index), is_plain ? kPlainValue : row->prefix + text};
}

Datum NumberDatum(std::uint32_t number) { return {Datum::Class::kNumber, number, {}}; }

std::string KeyText(std::uint32_t section_identifier, std::uint32_t identifier, const Datum& name) {
  if (const char* keyword = CompiledEntryKeyword(identifier)) return keyword;
  const bool is_prefixed =
      ClassOfIndex(identifier) == RUX_CLASS_Property && section_identifier != RUX_SECT_PROPERTY;
  return is_prefixed && name.is == Datum::Class::kName ? kPropertyPrefix + name.text : name.text;
}

std::vector<std::string> NamesOfKey(const std::string& key) {
  std::vector<std::string> names = {key};
  const auto add_behind = [&](const std::string& prefix) {
    if (!prefix.empty() && key.rfind(prefix, 0) == 0) names.push_back(key.substr(prefix.size()));
  };
  add_behind(kPropertyPrefix);
  for (const IndexClass& row : kIndexClasses) add_behind(row.prefix);
  if (key == kPlainValue) names.emplace_back();
  return names;
}

}  // namespace rux::compiled
