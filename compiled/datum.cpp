#include "compiled/datum.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/meta.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::compiled {
namespace {

constexpr const language::ClassRow* kNumber = language::FindClass(language::CLASS_Dword);
constexpr const language::ClassRow* kArgument = language::FindClass(language::CLASS_Small);
constexpr const language::ClassRow* kType = language::FindClass(language::CLASS_ValueType);
constexpr const language::ClassRow* kOperator = language::FindClass(language::CLASS_Operator);

std::string OperatorText(std::uint32_t code) {
  const language::Operator* row = language::FindOperator(code);
  return row != nullptr ? std::string(row->text) : fmt::format("(operator {})", code);
}

bool IsProperty(const Datum& datum) { return datum.Is(language::CLASS_Property); }

}  // namespace

std::optional<Datum> ImmediateDatum(std::uint32_t index) {
  const std::uint32_t ordinal = language::OrdinalOf(index);
  switch (language::ClassOf(index)) {
    case language::CLASS_Small:
      return Datum{kArgument, ordinal, fmt::format("{}{}", kArgument->prefix, ordinal)};
    case language::CLASS_ValueType:
      return Datum{kType, ordinal, {}};
    case language::CLASS_Operator:
      return Datum{kOperator, ordinal, OperatorText(ordinal)};
    default:
      return std::nullopt;
  }
}

Datum TextDatum(std::uint32_t index, std::string_view text) {
  const language::ClassRow* row = language::FindClass(index);
  if (row == nullptr) return {};
  const bool is_plain = row->base == language::CLASS_Value && text.empty();
  std::string shown(is_plain ? language::kPlainValue : row->prefix);
  shown += text;
  return {row, language::OrdinalOf(index), std::move(shown)};
}

Datum NumberDatum(std::uint32_t number) { return {kNumber, number, {}}; }

std::string KeyText(std::uint32_t section_identifier, std::uint32_t identifier, const Datum& name) {
  if (const auto* entry = language::FindCompiledEntryRow(identifier)) return entry->keyword;
  const bool is_prefixed =
      IsProperty(name) &&
      section_identifier != language::KindOf(language::SECTION_PROPERTY).compiled;
  return is_prefixed ? std::string(language::kPropertyPrefix) + name.text : name.text;
}

std::vector<std::string> NamesOfKey(const std::string& key) {
  std::vector<std::string> names = {key};
  const auto add_after = [&](std::string_view prefix) {
    if (!prefix.empty() && language::BeginsWith(key, prefix)) {
      names.push_back(key.substr(prefix.size()));
    }
  };
  add_after(language::kPropertyPrefix);
  for (const language::ClassRow& row : language::kClasses) add_after(row.prefix);
  if (key == language::kPlainValue) names.emplace_back();
  return names;
}

const CompiledTable* TableOf(const CompiledMeta& meta, std::uint32_t base) {
  const auto found = std::find_if(meta.tables.begin(), meta.tables.end(),
                                  [&](const CompiledTable& table) { return table.base == base; });
  return found == meta.tables.end() ? nullptr : &*found;
}

Datum Resolve(const CompiledMeta& meta, std::uint32_t index) {
  if (const std::optional<Datum> immediate = ImmediateDatum(index)) return *immediate;
  const CompiledTable* table = TableOf(meta, language::ClassOf(index));
  if (table == nullptr) return {};
  const std::uint32_t ordinal = language::OrdinalOf(index);
  if (ordinal < table->numbers.size()) return NumberDatum(table->numbers[ordinal]);
  return ordinal < table->texts.size() ? TextDatum(index, table->texts[ordinal]) : Datum();
}

std::string KeyOf(const CompiledMeta& meta, const CompiledSection& section,
                  const CompiledEntry& entry) {
  return KeyText(section.identifier, entry.identifier, Resolve(meta, entry.identifier));
}

}  // namespace rux::compiled
