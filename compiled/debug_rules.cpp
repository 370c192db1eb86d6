#include "compiled/debug_rules.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/debug_meta_records.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::compiled {
namespace {

bool BeginsWithDigit(std::string_view name) {
  return !name.empty() && std::isdigit(static_cast<unsigned char>(name.front())) != 0;
}

bool MustNotBeginWithDigit(std::uint32_t identifier) {
  return language::NameFormOf(identifier) == language::NameForm::kNoDigitFirst;
}

// Report a field of the object, of the payload, or of the value in an entry.
template <class... Args>
void ReportObject(Cursor& cursor, const char* field, std::size_t offset, std::string_view reason,
                  const Args&... args) {
  const Record object(cursor, "object");
  cursor.Report(field, offset, reason, args...);
}

template <class... Args>
void ReportPayload(Cursor& cursor, const char* field, std::size_t offset, std::string_view reason,
                   const Args&... args) {
  const Record payload(cursor, "payload");
  cursor.Report(field, offset, reason, args...);
}

template <class... Args>
void ReportValue(Cursor& cursor, const char* field, std::size_t offset, std::string_view reason,
                 const Args&... args) {
  const Record payload(cursor, "payload");
  const Record value(cursor, "value");
  cursor.Report(field, offset, reason, args...);
}

const char* KeywordOf(std::uint32_t entry) { return language::FindEntryRow(entry)->keyword; }

}  // namespace

void DebugRules::OnWord(Cursor& cursor, DebugWordView& word) {
  if (BeginsWithDigit(word.name)) {
    cursor.Report("name", word.extent.offset, "a name must not begin with a digit");
  }
  words_.push_back({word.name, word.value, word.extent.offset});
}

void DebugRules::OnKindBegin(Cursor&, Extent) {
  section_names_.Clear();
  entry_names_.Clear();
}

void DebugRules::OnFiles(const Texts& files, Extent) { files_ = files.size(); }

void DebugRules::OnSectionBegin(Cursor& cursor, const DebugSectionView& section) {
  kind_ = language::FindSourceKind(section.identifier);
  const bool is_include = kind_->source == language::SECTION_INCLUDE;
  begins_with_include_ |= sections_++ == 0 && is_include;
  has_other_kinds_ |= !is_include;
  if (section.ordinal > 0 && kind_->uniqueness == language::Uniqueness::kSingle) {
    ReportObject(cursor, "identifier", section.offset, "there is an earlier {} section",
                 kind_->keyword);
  }
  if (section.notation != kind_->notation) {
    ReportObject(cursor, "notation", section.notation_offset(), "expected {1}, found {0}",
                 section.notation, kind_->notation);
  }
  if (section.name != kind_->keyword) {
    ReportObject(cursor, "name", section.name_offset(), "expected {}", kind_->keyword);
  }
  if (section.entry_count < kind_->templates.size()) {
    cursor.Report("entry count", section.entry_count_offset, "expected at least {1}, found {0}",
                  section.entry_count, kind_->templates.size());
  }
  if (kind_->uniqueness != language::Uniqueness::kKeys) entry_names_.Clear();
}

void DebugRules::OnEntry(Cursor& cursor, DebugEntryView& entry) {
  const std::optional<language::Notation> notation = NotationOf(cursor, entry);
  if (!notation) return;
  if (entry.notation != *notation) {
    ReportObject(cursor, "notation", entry.notation_offset(), "expected {1}, found {0}",
                 entry.notation, *notation);
  }
  if (entry.is_given()) {
    ++entries_;
    CheckGiven(cursor, entry, (*notation & language::kFreeName) != 0);
  } else {
    const bool is_known = entry.ordinal < kind_->templates.size();
    CheckNotGiven(cursor, entry, is_known && (*notation & language::kRequired) == 0);
  }
}

// The notation of an entry of such a section. None, reported, when the section cannot have it.
std::optional<language::Notation> DebugRules::NotationOf(Cursor& cursor,
                                                         const DebugEntryView& entry) {
  if (entry.ordinal < kind_->templates.size()) {
    const language::EntryTemplate& row = kind_->templates[entry.ordinal];
    if (entry.identifier == row.identifier) return row.notation;
    ReportObject(cursor, "identifier", entry.offset, "expected 0x{1:08X} ({2}), found 0x{0:08X}",
                 entry.identifier, row.identifier, KeywordOf(row.identifier));
    return std::nullopt;
  }
  for (const language::FreeEntryRule& row : kind_->free_entries) {
    if (entry.identifier == row.identifier) return row.notation;
  }
  ReportObject(cursor, "identifier", entry.offset, "a {1} section cannot have 0x{0:08X} here",
               entry.identifier, kind_->keyword);
  return std::nullopt;
}

void DebugRules::CheckNotGiven(Cursor& cursor, const DebugEntryView& entry, bool may_lack) {
  if (!may_lack) {
    ReportPayload(cursor, "payload type", entry.payload_extent.offset, "the entry must be given");
  }
  if (!entry.name.empty()) {
    ReportObject(cursor, "name", entry.name_offset(), "an entry that is not given has no name");
  }
  if (entry.line != 0) {
    ReportObject(cursor, "line", entry.line_offset(),
                 "expected 0 for an entry that is not given, found {}", entry.line);
  }
  if (entry.file_index != 0) {
    ReportObject(cursor, "file index", entry.file_index_offset(),
                 "expected 0 for an entry that is not given, found {}", entry.file_index);
  }
}

void DebugRules::CheckGiven(Cursor& cursor, const DebugEntryView& entry, bool is_free) {
  CheckName(cursor, entry, is_free);
  if (entry.identifier == language::ENTRY_NAME &&
      !section_names_.Insert(entry.fields[0].texts.front())) {
    ReportPayload(cursor, "Text", entry.fields[0].extent.offset,
                  "an earlier section of this kind has the same name");
  }
  if (entry.identifier == language::ENTRY_DEFINED_WORD) CheckDefinition(cursor, entry);
  if (language::PayloadOf(entry.identifier) == language::PAYLOAD_VALUE) CheckValue(cursor, entry);
}

// The key, or one that begins like it; no two alike.
void DebugRules::CheckName(Cursor& cursor, const DebugEntryView& entry, bool is_free) {
  const std::string_view keyword = KeywordOf(entry.identifier);
  const bool fits =
      is_free ? entry.name.substr(0, keyword.size()) == keyword : entry.name == keyword;
  if (!fits) {
    ReportObject(cursor, "name", entry.name_offset(), "expected {}{}", keyword,
                 is_free ? "..." : "");
  } else if (MustNotBeginWithDigit(entry.identifier) && BeginsWithDigit(entry.name)) {
    ReportObject(cursor, "name", entry.name_offset(), "a name must not begin with a digit");
  } else if (kind_->uniqueness != language::Uniqueness::kNothing &&
             !entry_names_.Insert(entry.name)) {
    ReportObject(cursor, "name", entry.name_offset(), "an earlier entry has the same name");
  }
}

void DebugRules::CheckDefinition(Cursor& cursor, const DebugEntryView& entry) {
  if (Word* word = FindWord(entry.name)) {
    word->is_defined = true;
  } else {
    ReportObject(cursor, "name", entry.name_offset(), "no such defined word");
  }
}

// The type's name is the word for its code, and there are as many parts as the type needs.
void DebugRules::CheckValue(Cursor& cursor, const DebugEntryView& entry) {
  const DebugFieldView& name = entry.fields[0];
  const Word* type = FindWord(name.texts.front());
  if (type == nullptr) {
    ReportValue(cursor, "Type", name.extent.offset, "no such defined word");
  } else if (type->value != entry.value_type) {
    ReportValue(cursor, "type code", entry.value_type_offset,
                "expected {}, the code of the type's name, found {}", type->value,
                entry.value_type);
  }
  if (entry.value_type == language::kComparison.code) return CheckCalculation(cursor, entry);
  const language::ValueType& value = language::FindValueType(entry.value_type);
  if (!value.HasList()) return;
  const DebugFieldView& list = entry.fields[entry.field_count - 1];
  const std::size_t parts = 1 + value.TextCount() + list.texts.size();
  if (parts < value.least) {
    ReportValue(cursor, list.name, list.extent.offset, "expected at least {1}, found {0}",
                list.texts.size(), value.least - 1 - value.TextCount());
  } else if (parts > value.MostKept()) {
    ReportValue(cursor, list.name, list.extent.offset, "expected at most {1}, found {0}",
                list.texts.size(), value.MostKept() - 1 - value.TextCount());
  }
}

void DebugRules::CheckCalculation(Cursor& cursor, const DebugEntryView& entry) {
  const DebugFieldView* parts = &entry.fields[1];
  const std::uint32_t code = language::OperatorCode(parts[0].texts.front());
  const bool compares = language::IsComparison(code);
  if (code == 0) {
    ReportValue(cursor, parts[0].name, parts[0].extent.offset, "no such operator");
    return;
  }
  // Only a comparison has as many as the record; the others are empty.
  for (std::size_t i = language::FindValueType(entry.value_type).least - 1;
       i < entry.field_count - 1; ++i) {
    const bool is_empty = parts[i].texts.front().empty();
    if (is_empty && compares) {
      ReportValue(cursor, parts[i].name, parts[i].extent.offset, "a comparison needs it");
    } else if (!is_empty && !compares) {
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
