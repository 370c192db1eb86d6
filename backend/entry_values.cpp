// The compiled values of an entry, by the kind of its payload.
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "backend/compile_pass.h"
#include "checker/value_fields.h"
#include "findings/origin.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/entry_data.h"
#include "frontend/value_records.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

std::uint32_t ModelCompiler::GetValueVal(const std::string& text) {
  std::uint32_t number = 0;
  if (NumberOrWord(text, number)) return interner_.Number(number);
  if (text == kPlainValue) return g_tblValue[""];
  if (BeginsWith(text, kValuePrefix)) return g_tblValue[text.substr(kValuePrefix.size())];
  if (BeginsWith(text, kGlobalPrefix)) return g_tblGlobal[text.substr(kGlobalPrefix.size())];
  if (HasPrefix(text, kArgumentPrefix) &&
      StringToLong(text.substr(kArgumentPrefix.size()), number)) {
    return CLASS_Small + number;
  }
  return kNoIndex;
}

std::uint32_t ModelCompiler::FieldValue(Role role, const std::string& text) {
  switch (role) {
    case Role::kOperand:
    case Role::kNumber:
    case Role::kLocalValue:
      return GetValueVal(text);
    case Role::kAction:
      return interner_.actions[text];
    case Role::kTable:
      return g_tblTableName[text];
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
  std::vector<std::uint32_t>& values;

  void operator()(std::monostate) const {}

  void operator()(std::uint32_t number) const { values.push_back(model.interner_.Number(number)); }

  void operator()(const std::string& text) const {
    findings::ExaminePart(0);
    if (!IsNumericString(entry_id)) {
      values.push_back(model.interner_.Text(text));
      return;
    }
    std::uint32_t number = 0;
    if (WordOrNumber(text, number)) values.push_back(model.interner_.Number(number));
  }

  void operator()(const TextList& list) const {
    values.reserve(list.size());
    std::uint32_t part = 0;
    for (const std::string& text : list) {
      findings::ExaminePart(part++);
      if (!IsNumericList(entry_id)) {
        values.push_back(model.interner_.Text(text));
        continue;
      }
      std::uint32_t number = 0;
      if (!StringToLong(text, number)) return;  // ends the list: a defined word does, too
      values.push_back(model.interner_.Number(number));
    }
  }

  void operator()(const CGeValue& value) const {
    const std::vector<ValueField> fields = FieldsOf(value);
    std::size_t count = 1;
    for (const ValueField& field : fields) count += field.list ? field.list->size() : 1;
    values.reserve(count);
    values.push_back(CLASS_ValueType + value.GetType());
    for (const ValueField& field : fields) {
      if (field.text) AppendField(field.role, *field.text);
      if (!field.list) continue;
      for (const std::string& text : *field.list) AppendField(field.role, text);
    }
  }

  void operator()(const RepeaterRecord& record) const {
    findings::ExaminePart(0);
    std::uint32_t count = 0;
    if (!StringToLong(record.Count, count)) return;  // nothing of the entry, not even the action
    values.push_back(model.interner_.Number(count));
    values.push_back(model.interner_.actions[record.Action]);
    for (const std::string& text : record.Args) AppendField(Role::kOperand, text);
  }

 private:
  // So far as many values as parts were appended.
  void AppendField(Role role, const std::string& text) const {
    findings::ExaminePart(static_cast<std::uint32_t>(values.size()));
    values.push_back(model.FieldValue(role, text));
  }
};

TableCursor* ModelCompiler::NameTable(std::uint32_t section_id, std::uint32_t entry_id) {
  switch (TextUseOf(section_id, entry_id)) {
    case TextUse::kGroupName:
      return &interner_.groups;
    case TextUse::kActionName:
      return &interner_.actions;
    case TextUse::kPlain:
    case TextUse::kMayBeEmpty:
      break;
  }
  return nullptr;
}

void ModelCompiler::SetEntryValues(std::uint32_t section_id, const CRUXEntry& entry,
                                   tagGCENTRY& record) {
  if (entry.identifier == ENTRY_TABLE_ROW) return;
  const auto* text = entry.m_RuxEntryData.Get<std::string>();
  if (TableCursor* names = text ? NameTable(section_id, entry.identifier) : nullptr) {
    record.values.push_back((*names)[*text]);
    return;
  }
  std::visit(PayloadCompiler{*this, entry.identifier, record.values},
             entry.m_RuxEntryData.payload());
}

}  // namespace ruxcomp::core
