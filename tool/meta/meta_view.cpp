#include "tool/meta/meta_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>

#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"
#include "tool/failure.h"
#include "tool/meta/meta_format.h"

namespace rux {
namespace {

constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;

constexpr std::uint32_t ClassOf(std::uint32_t index) { return index & 0xFF000000; }
constexpr std::uint32_t OrdinalOf(std::uint32_t index) { return index & 0x00FFFFFF; }

bool Load(const std::string& path, tagMETAFILEINFO* info) {
  try {
    return gcInit(path, info) != 0;
  } catch (const std::exception&) {
    // A damaged file may announce more than the memory holds.
    return false;
  }
}

// How a symbol of a class looks in a script, and what it is.
struct SymbolClass {
  std::uint32_t base;
  Datum::Class is;
  const char* prefix;
};

constexpr SymbolClass kSymbolClasses[] = {
    {RUX_CLASS_Property, Datum::Class::kName, ""},
    {RUX_CLASS_Global, Datum::Class::kGlobal, "G_"},
    {RUX_CLASS_Value, Datum::Class::kValue, "VALUE_"},
    {RUX_CLASS_Repeater, Datum::Class::kName, ""},
    {RUX_CLASS_String, Datum::Class::kString, ""},
    {RUX_CLASS_Group, Datum::Class::kGroup, ""},
    {RUX_CLASS_Action, Datum::Class::kAction, ""},
    {RUX_CLASS_TableName, Datum::Class::kTable, ""},
};

std::string OperatorText(std::uint32_t code) {
#define OPERATOR(text, operator_code) \
  if (code == (operator_code)) return text;
#include "ruxcomp/operators.def"
  return fmt::format("(operator {})", code);
}

std::string FixedKey(std::uint32_t identifier) {
  switch (identifier) {
#define FIXED_ENTRY(name, keyword, source, compiled) \
  case compiled:                                     \
    return keyword;
#define NAMED_ENTRY(name, keyword, source, table, prefix)
#define PLAIN_ENTRY(name, keyword, source)
#include "ruxcomp/entries.def"
    default:
      return fmt::format("(entry 0x{:08X})", identifier);
  }
}

}  // namespace

MetaView::MetaView(const std::string& path) : path_(path) {
  if (!Load(path, &info_)) {
    throw Failure(ExitStatus::kTrouble, "cannot load " + path + ": " + WhyNotLoaded(path));
  }
#define SYMBOL_TABLE(name, class_byte, key) Invert(RUX_CLASS_##name, g_tbl##name);
#include "ruxcomp/symbol_tables.def"
}

std::uint32_t MetaView::CountOf(const Kind& kind) const { return gcGetSectCount(kind.section); }

std::vector<MetaSection> MetaView::SectionsOf(const Kind& kind) const {
  std::vector<MetaSection> sections;
  const std::uint32_t count = CountOf(kind);
  for (std::uint32_t i = 0; i < count; ++i) {
    // A handle points at the section's record.
    const auto* record = static_cast<const tagGCSECT*>(gcGetSectByIndex(kind.section, i));
    sections.push_back({&kind, i, record});
  }
  return sections;
}

std::optional<std::string> MetaView::NameOf(const MetaSection& section) const {
  const std::optional<Datum> name = FirstValue(section, RUX_ENTRY_NAME);
  if (!name || name->is == Datum::Class::kUnresolved) return std::nullopt;
  return name->text;
}

std::optional<std::uint32_t> MetaView::IdOf(const MetaSection& section) const {
  const std::optional<Datum> id = FirstValue(section, RUX_ENTRY_ID);
  if (!id || id->is != Datum::Class::kNumber) return std::nullopt;
  return id->number;
}

std::string MetaView::KeyOf(const MetaSection& section, const tagGCENTRY& entry) const {
  if (ClassOf(entry.identifier) == ClassOf(RUX_ENTRY_NAME)) return FixedKey(entry.identifier);
  const Datum name = Resolve(entry.identifier);
  if (name.is == Datum::Class::kUnresolved) return FixedKey(entry.identifier);
  const bool is_prefixed_property =
      ClassOf(entry.identifier) == RUX_CLASS_Property && section.kind->section != RUX_SECT_PROPERTY;
  return is_prefixed_property ? "P_" + name.text : name.text;
}

Datum MetaView::Resolve(std::uint32_t index) const {
  using Class = Datum::Class;
  const std::uint32_t number = OrdinalOf(index);
  switch (ClassOf(index)) {
    case RUX_CLASS_Dword:
      if (number >= numbers_.size() || numbers_[number] == kNoNumber) return {};
      return {Class::kNumber, numbers_[number], {}};
    case RUX_CLASS_Small:
      return {Class::kArgument, number, fmt::format("ARG{}", number)};
    case RUX_CLASS_ValueType:
      return {Class::kType, number, {}};
    case RUX_CLASS_Operator:
      return {Class::kOperator, number, OperatorText(number)};
  }
  const std::string* key = StringOf(index);
  if (key == nullptr) return {};
  const SymbolClass& row =
      *std::find_if(std::begin(kSymbolClasses), std::end(kSymbolClasses),
                    [&](const SymbolClass& each) { return each.base == ClassOf(index); });
  // The value without a name is just VALUE.
  if (row.is == Class::kValue && key->empty()) return {row.is, number, "VALUE"};
  return {row.is, number, row.prefix + *key};
}

void MetaView::Invert(std::uint32_t base, const std::map<std::string, std::uint32_t>& table) {
  std::vector<const std::string*>& strings = strings_[base];
  for (const auto& [key, index] : table) {
    const std::uint32_t ordinal = OrdinalOf(index);
    if (ClassOf(index) != base) continue;
    if (strings.size() <= ordinal) strings.resize(ordinal + 1, nullptr);
    if (strings[ordinal] == nullptr) strings[ordinal] = &key;
  }
}

void MetaView::Invert(std::uint32_t base, const std::map<std::uint32_t, std::uint32_t>& table) {
  for (const auto& [key, index] : table) {
    const std::uint32_t ordinal = OrdinalOf(index);
    if (ClassOf(index) != base) continue;
    if (numbers_.size() <= ordinal) numbers_.resize(ordinal + 1, kNoNumber);
    numbers_[ordinal] = key;
  }
}

std::optional<Datum> MetaView::FirstValue(const MetaSection& section,
                                          std::uint32_t identifier) const {
  for (const tagGCENTRY& entry : section.record->entries) {
    if (entry.identifier == identifier && !entry.values.empty()) {
      return Resolve(entry.values.front());
    }
  }
  return std::nullopt;
}

const std::string* MetaView::StringOf(std::uint32_t index) const {
  const auto names = strings_.find(ClassOf(index));
  if (names == strings_.end() || OrdinalOf(index) >= names->second.size()) return nullptr;
  return names->second[OrdinalOf(index)];
}

}  // namespace rux
