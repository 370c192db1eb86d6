// The compiled values of an entry, by the kind of its payload.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "backend/compile_pass.h"
#include "checker/value_fields.h"
#include "findings/origin.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/entry_data.h"
#include "frontend/text.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

std::uint32_t ModelCompiler::GetValueVal(std::string_view text) {
  std::uint32_t number = 0;
  if (NumberOrWord(text, number)) return interner_.Number(number);
  if (text == kPlainValue) return interner_.Name<CLASS_Value>({});
  if (BeginsWith(text, kValuePrefix)) {
    return interner_.Name<CLASS_Value>(text.substr(kValuePrefix.size()));
  }
  if (BeginsWith(text, kGlobalPrefix)) {
    return interner_.Name<CLASS_Global>(text.substr(kGlobalPrefix.size()));
  }
  if (HasPrefix(text, kArgumentPrefix) &&
      StringToLong(text.substr(kArgumentPrefix.size()), number)) {
    return CLASS_Small + number;
  }
  return kNoIndex;
}

std::uint32_t ModelCompiler::FieldValue(Role role, std::string_view text) {
  switch (role) {
    case Role::kOperand:
    case Role::kNumber:
    case Role::kLocalValue:
      return GetValueVal(text);
    case Role::kAction:
      return interner_.Name<CLASS_Action>(text);
    case Role::kTable:
      return interner_.Name<CLASS_TableName>(text);
    case Role::kOperator:
      return CLASS_Operator + OperatorCode(text);
    case Role::kNone:
    case Role::kRepeatCount:  // of repeater entries
    case Role::kRepeatArgument:
      break;
  }
  return kNoIndex;
}

// Appends the values of a payload, whatever it holds.
struct PayloadCompiler {
  ModelCompiler& model;
  std::uint32_t entry_id;
  std::vector<std::uint32_t>& words;
  const std::size_t start = words.size();

  void operator()(std::monostate) const {}

  void operator()(std::uint32_t number) const { words.push_back(model.interner_.Number(number)); }

  void operator()(Text text) const {
    findings::ExaminePart(0);
    if (!IsNumericString(entry_id)) {
      words.push_back(model.interner_.Text(text));
      return;
    }
    std::uint32_t number = 0;
    if (WordOrNumber(text, number)) words.push_back(model.interner_.Number(number));
  }

  void operator()(const TextList& list) const {
    std::uint32_t part = 0;
    for (const std::string_view text : list) {
      findings::ExaminePart(part++);
      if (!IsNumericList(entry_id)) {
        words.push_back(model.interner_.Text(text));
        continue;
      }
      std::uint32_t number = 0;
      if (!StringToLong(text, number)) return;  // ends the list: a defined word does, too
      words.push_back(model.interner_.Number(number));
    }
  }

  void operator()(const CGeValue& value) const {
    words.push_back(CLASS_ValueType + value.GetType());
    for (const ValueField& field : ValueFields(value)) {
      if (!field.is_list) AppendField(field.role, field.text);
      for (const std::string_view text : field.list) AppendField(field.role, text);
    }
  }

  void operator()(const RepeaterRecord& record) const {
    findings::ExaminePart(0);
    std::uint32_t count = 0;
    if (!StringToLong(record.Count, count)) return;  // nothing of the entry, not even the action
    words.push_back(model.interner_.Number(count));
    words.push_back(model.interner_.Name<CLASS_Action>(record.Action));
    for (const std::string_view text : record.Args) AppendField(Role::kOperand, text);
  }

 private:
  // As many values as parts were appended so far.
  void AppendField(Role role, std::string_view text) const {
    findings::ExaminePart(static_cast<std::uint32_t>(words.size() - start));
    words.push_back(model.FieldValue(role, text));
  }
};

void ModelCompiler::SetEntryValues(std::uint32_t section_id, const CRUXEntry& entry) {
  if (entry.identifier == ENTRY_TABLE_ROW) return;
  if (const std::optional<Text> text = entry.m_RuxEntryData.text()) {
    switch (TextUseOf(section_id, entry.identifier)) {
      case TextUse::kGroupName:
        return out_.words.push_back(interner_.Name<CLASS_Group>(*text));
      case TextUse::kActionName:
        return out_.words.push_back(interner_.Name<CLASS_Action>(*text));
      case TextUse::kPlain:
      case TextUse::kMayBeEmpty:
      case TextUse::kWord:
        break;
    }
  }
  entry.m_RuxEntryData.Visit(PayloadCompiler{*this, entry.identifier, out_.words});
}

}  // namespace ruxcomp::core
