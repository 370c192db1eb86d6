// The compiled values of an entry, by the kind of its payload.
#include "backend/compile_pass.h"
#include "backend/lookups.h"
#include "backend/symbol_tables.h"
#include "checker/number.h"
#include "checker/value_fields.h"
#include "frontend/entry_data.h"
#include "frontend/identifiers.h"

namespace {

std::uint32_t FieldValue(Role role, const std::string& text) {
  switch (role) {
    case Role::kOperand:
    case Role::kNumber:
    case Role::kLocalValue:
      return GetValueVal(text);
    case Role::kAction:
      return Lookups::Current().actions[text];
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
struct Compiler {
  std::uint32_t entryId;
  std::vector<std::uint32_t>& values;

  void operator()(std::monostate) const {}

  void operator()(std::uint32_t number) const {
    values.push_back(Lookups::Current().Number(number));
  }

  void operator()(const std::string& text) const {
    if (!IsNumericString(entryId)) {
      values.push_back(Lookups::Current().Text(text));
      return;
    }
    std::uint32_t number = 0;
    if (WordOrNumber(text, number)) values.push_back(Lookups::Current().Number(number));
  }

  void operator()(const TextList& list) const {
    values.reserve(list.size());
    for (const std::string& text : list) {
      if (!IsNumericList(entryId)) {
        values.push_back(Lookups::Current().Text(text));
        continue;
      }
      std::uint32_t number = 0;
      if (!StringToLong(text, number)) return;  // ends the list: a defined word does, too
      values.push_back(Lookups::Current().Number(number));
    }
  }

  void operator()(const CGeValue& value) const {
    const std::vector<ValueField> fields = FieldsOf(value);
    std::size_t count = 1;
    for (const ValueField& field : fields) count += field.list ? field.list->size() : 1;
    values.reserve(count);
    values.push_back(CLASS_ValueType + value.GetType());
    for (const ValueField& field : fields) {
      if (field.text) values.push_back(FieldValue(field.role, *field.text));
      if (!field.list) continue;
      for (const std::string& text : *field.list) values.push_back(FieldValue(field.role, text));
    }
  }

  void operator()(const RepeaterRecord& record) const {
    std::uint32_t count = 0;
    if (!StringToLong(record.Count, count)) return;  // nothing of the entry, not even the action
    values.push_back(Lookups::Current().Number(count));
    values.push_back(Lookups::Current().actions[record.Action]);
    for (const std::string& text : record.Args) values.push_back(GetValueVal(text));
  }
};

// The table whose names an entry of a section refers to; null when it is a text like any other.
TableCursor* NameTable(std::uint32_t sectionId, std::uint32_t entryId) {
  switch (TextUseOf(sectionId, entryId)) {
    case TextUse::kGroupName:
      return &Lookups::Current().groups;
    case TextUse::kActionName:
      return &Lookups::Current().actions;
    case TextUse::kPlain:
    case TextUse::kMayBeEmpty:
      break;
  }
  return nullptr;
}

}  // namespace

void SetEntryValues(std::uint32_t sectionId, std::uint32_t entryId, const CRuxEntryData& payload,
                    tagGCENTRY& record) {
  if (entryId == ENTRY_TABLE_ROW) return;
  const auto* text = payload.Get<std::string>();
  if (TableCursor* names = text ? NameTable(sectionId, entryId) : nullptr) {
    record.values.push_back((*names)[*text]);
    return;
  }
  std::visit(Compiler{entryId, record.values}, payload.payload());
}
