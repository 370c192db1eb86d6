#include "compiled/debug_rules.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "compiled/keywords.h"
#include "compiled/value_shape.h"

namespace rux::compiled {
namespace {

bool BeginsWithDigit(std::string_view name) {
  return !name.empty() && std::isdigit(static_cast<unsigned char>(name.front())) != 0;
}

// Whether the script's own names of such entries are free but for their first character.
bool HasPlainName(std::uint32_t identifier) {
  return identifier == kKeyDEFINED_WORD || identifier == kKeyPROPERTY || identifier == kKeyREPEATER;
}

// Report a field of the object, of the payload, or of the value in an entry.
template <class... Args>
void ReportObject(Cursor& cursor, const char* field, std::size_t offset,
                  fmt::format_string<Args...> reason, Args&&... args) {
  const Record object(cursor, "object");
  cursor.Report(field, offset, reason, std::forward<Args>(args)...);
}

template <class... Args>
void ReportPayload(Cursor& cursor, const char* field, std::size_t offset,
                   fmt::format_string<Args...> reason, Args&&... args) {
  const Record payload(cursor, "payload");
  cursor.Report(field, offset, reason, std::forward<Args>(args)...);
}

template <class... Args>
void ReportValue(Cursor& cursor, const char* field, std::size_t offset,
                 fmt::format_string<Args...> reason, Args&&... args) {
  const Record payload(cursor, "payload");
  const Record value(cursor, "value");
  cursor.Report(field, offset, reason, std::forward<Args>(args)...);
}

// 0 for no operator.
std::uint32_t OperatorCode(std::string_view text) {
#define OPERATOR(operator_text, code) \
  if (text == (operator_text)) return code;
#include "ruxcomp/language/operators.def"
  return 0;
}

}  // namespace

void DebugRules::OnWord(Cursor& cursor, DebugWordView& word) {
  if (BeginsWithDigit(word.name)) {
    cursor.Report("name", word.extent.offset, "a name must not begin with a digit");
  }
  words_.push_back({word.name, word.value, word.extent.offset});
}

void DebugRules::OnKindBegin(Cursor&, std::size_t, Extent) {
  section_names_.Clear();
  entry_names_.Clear();
}

void DebugRules::OnFiles(Cursor&, const Texts& files, Extent) { files_ = files.size(); }

void DebugRules::OnSectionBegin(Cursor& cursor, const DebugSectionView& section) {
  schema_ = FindSchema(section.identifier - kSourceSection);
  const bool is_include = schema_->kind == kKindINCLUDE;
  begins_with_include_ |= sections_++ == 0 && is_include;
  has_other_kinds_ |= !is_include;
  if (section.ordinal > 0 && schema_->is_single) {
    ReportObject(cursor, "identifier", section.offset, "there is a {} section before it",
                 schema_->keyword);
  }
  if (section.notation != schema_->notation) {
    ReportObject(cursor, "notation", section.notation_offset(), "it is {}, right is {}",
                 section.notation, schema_->notation);
  }
  if (section.name != schema_->keyword) {
    ReportObject(cursor, "name", section.name_offset(), "right is {}", schema_->keyword);
  }
  if (section.entry_count < schema_->keys.size()) {
    cursor.Report("entry count", section.entry_count_offset, "it is {}, needed are {}",
                  section.entry_count, schema_->keys.size());
  }
  if (schema_->names == NameScope::kSection) entry_names_.Clear();
}

void DebugRules::OnEntry(Cursor& cursor, DebugEntryView& entry) {
  const SchemaKey* key = KeyOf(cursor, entry);
  if (key == nullptr) return;
  if (entry.notation != key->notation) {
    ReportObject(cursor, "notation", entry.notation_offset(), "it is {}, right is {}",
                 entry.notation, key->notation);
  }
  if (entry.is_given()) {
    ++entries_;
    CheckGiven(cursor, entry, (key->notation & kFreeName) != 0);
  } else {
    const bool is_known = entry.ordinal < schema_->keys.size();
    CheckNotGiven(cursor, entry, is_known && (key->notation & kRequired) == 0);
  }
}

// Which of those in the schema the entry is. Null when it can be none.
const SchemaKey* DebugRules::KeyOf(Cursor& cursor, const DebugEntryView& entry) {
  const std::vector<SchemaKey>& keys = schema_->keys;
  if (entry.ordinal < keys.size()) {
    const SchemaKey& key = keys[entry.ordinal];
    if (entry.identifier == key.identifier) return &key;
    ReportObject(cursor, "identifier", entry.offset, "it is 0x{:08X}, right is 0x{:08X} ({})",
                 entry.identifier, static_cast<std::uint32_t>(key.identifier),
                 SourceEntryKeyword(key.identifier));
    return nullptr;
  }
  for (const SchemaKey& key : schema_->more) {
    if (entry.identifier == key.identifier) return &key;
  }
  ReportObject(cursor, "identifier", entry.offset, "no 0x{:08X} can stand here in a {} section",
               entry.identifier, schema_->keyword);
  return nullptr;
}

void DebugRules::CheckNotGiven(Cursor& cursor, const DebugEntryView& entry, bool may_lack) {
  if (!may_lack) {
    ReportPayload(cursor, "payload type", entry.payload_extent.offset, "the entry must be given");
  }
  if (!entry.name.empty()) {
    ReportObject(cursor, "name", entry.name_offset(), "an entry that is not given has none");
  }
  if (entry.line != 0) {
    ReportObject(cursor, "line", entry.line_offset(), "it is {} of an entry that is not given",
                 entry.line);
  }
  if (entry.file_index != 0) {
    ReportObject(cursor, "file index", entry.file_index_offset(),
                 "it is {} of an entry that is not given", entry.file_index);
  }
}

void DebugRules::CheckGiven(Cursor& cursor, const DebugEntryView& entry, bool is_free) {
  CheckName(cursor, entry, is_free);
  if (entry.identifier == kKeyNAME && !section_names_.Insert(entry.fields[0].texts.front())) {
    ReportPayload(cursor, "Text", entry.fields[0].extent.offset,
                  "a section of this kind before it has the name");
  }
  if (entry.identifier == kKeyDEFINED_WORD) CheckDefinition(cursor, entry);
  if (PayloadClassOf(entry.identifier) == PayloadClass::kValue) CheckValue(cursor, entry);
}

// The key, or one that begins like it; no two alike.
void DebugRules::CheckName(Cursor& cursor, const DebugEntryView& entry, bool is_free) {
  const std::string_view keyword = SourceEntryKeyword(entry.identifier);
  const bool fits =
      is_free ? entry.name.substr(0, keyword.size()) == keyword : entry.name == keyword;
  if (!fits) {
    ReportObject(cursor, "name", entry.name_offset(), "right is {}{}", keyword,
                 is_free ? "..." : "");
  } else if (HasPlainName(entry.identifier) && BeginsWithDigit(entry.name)) {
    ReportObject(cursor, "name", entry.name_offset(), "a name must not begin with a digit");
  } else if (schema_->names != NameScope::kNone && !entry_names_.Insert(entry.name)) {
    ReportObject(cursor, "name", entry.name_offset(), "an entry before it has the same name");
  }
}

void DebugRules::CheckDefinition(Cursor& cursor, const DebugEntryView& entry) {
  if (Word* word = FindWord(entry.name)) {
    word->is_defined = true;
  } else {
    ReportObject(cursor, "name", entry.name_offset(), "there is no such defined word");
  }
}

// The type's name is the word for its code, and there are as many parts as the type needs.
void DebugRules::CheckValue(Cursor& cursor, const DebugEntryView& entry) {
  const DebugFieldView& name = entry.fields[0];
  const Word* type = FindWord(name.texts.front());
  if (type == nullptr) {
    ReportValue(cursor, "Type", name.extent.offset, "there is no such defined word");
  } else if (type->value != entry.value_type) {
    ReportValue(cursor, "type code", entry.value_type_offset,
                "it is {}, the type's name stands for {}", entry.value_type, type->value);
  }
  if (entry.value_type == kCalculation) return CheckCalculation(cursor, entry);
  const ValueShape& shape = ShapeOf(entry.value_type);
  if (shape.list.name == nullptr) return;
  const DebugFieldView& list = entry.fields[entry.field_count - 1];
  const std::size_t count = list.texts.size();
  if (count < shape.least) {
    ReportValue(cursor, list.name, list.extent.offset, "elements: {}, needed are {}", count,
                shape.least);
  } else if (count > shape.most) {
    ReportValue(cursor, list.name, list.extent.offset, "elements: {}, the most are {}", count,
                shape.most);
  }
}

void DebugRules::CheckCalculation(Cursor& cursor, const DebugEntryView& entry) {
  const DebugFieldView* parts = &entry.fields[1];
  const std::uint32_t code = OperatorCode(parts[0].texts.front());
  if (code == 0) {
    ReportValue(cursor, parts[0].name, parts[0].extent.offset, "there is no such operator");
    return;
  }
  for (std::size_t i = kArithmeticParts; i < entry.field_count - 1; ++i) {
    const bool is_empty = parts[i].texts.front().empty();
    if (is_empty && Compares(code)) {
      ReportValue(cursor, parts[i].name, parts[i].extent.offset, "a comparison needs it");
    } else if (!is_empty && !Compares(code)) {
      ReportValue(cursor, parts[i].name, parts[i].extent.offset, "only a comparison has it");
    }
  }
}

void DebugRules::OnEnd(Cursor& cursor) {
  for (std::size_t i = 0; i < words_.size(); ++i) {
    if (words_[i].is_defined) continue;
    const Record record(cursor, "defined word", i);
    cursor.Report("name", words_[i].offset, "no entry defines it");
  }
}

DebugRules::Word* DebugRules::FindWord(std::string_view name) {
  const auto word = std::lower_bound(
      words_.begin(), words_.end(), name,
      [](const Word& each, std::string_view wanted) { return each.name < wanted; });
  return word != words_.end() && word->name == name ? &*word : nullptr;
}

}  // namespace rux::compiled
