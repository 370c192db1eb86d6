#include "compiled/meta_rules.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace rux::compiled {
namespace {

// VALUE: the value without a name of its own.
constexpr std::uint32_t kPlainValue = language::FixedIndex(language::CLASS_Value, "");

constexpr std::uint32_t BitOf(std::uint32_t section_identifier) {
  return std::uint32_t{1} << (section_identifier & language::kKindMask);
}

}  // namespace

void MetaRules::OnTable(Cursor& cursor, MetaTableView table) {
  tables_.Take(cursor, std::move(table));
}

void MetaRules::OnSectionBegin(Cursor& cursor, const MetaSectionView& section) {
  ++sections_;
  if (!tables_.complete()) return;
  kind_ = language::FindCompiledKind(section.identifier);
  const bool goes_on = section.identifier == identifier_;
  if (!goes_on || kind_->uniqueness != language::Uniqueness::kKeys) {
    name_scope_ = static_cast<std::uint32_t>(section.ordinal) + 1;
  }
  CheckKind(cursor, section);
  const language::Rows<language::CompiledEntry> keys = language::CompiledEntriesOf(*kind_);
  next_key_ = keys.begin();
  keys_end_ = keys.end();
  value_rules_.BeginSection(section);
}

// The sections of a kind stand together.
void MetaRules::CheckKind(Cursor& cursor, const MetaSectionView& section) {
  const bool goes_on = std::exchange(identifier_, section.identifier) == section.identifier;
  const bool was_there = (kinds_ & BitOf(section.identifier)) != 0;
  kinds_ |= BitOf(section.identifier);
  if (was_there && kind_->uniqueness == language::Uniqueness::kSingle) {
    cursor.Report("identifier", section.offset, "there is a {} section before it", kind_->keyword);
  } else if (was_there && !goes_on) {
    cursor.Report("identifier", section.offset,
                  "sections of kind {} stand before those of another kind, too", kind_->keyword);
  }
}

void MetaRules::OnEntry(Cursor& cursor, MetaEntryView& entry) {
  ++entries_;
  values_ += entry.values.size();
  if (!tables_.complete()) return;
  if (const language::CompiledEntry* key = TakeKey(cursor, entry)) {
    if (key->content == language::Content::kTypedValue) CheckValueKey(cursor, entry);
    value_rules_.CheckEntry(cursor, entry, key->content);
  } else if (IsNamedEntry(cursor, entry)) {
    CheckTwice(cursor, entry);
    const std::uint32_t base = language::ClassOf(entry.identifier);
    if (base == language::CLASS_Global) references_.Define(entry.identifier);
    value_rules_.AddLocalValue(entry.identifier);
    value_rules_.CheckEntry(cursor, entry, language::ContentOfNamed(base));
  }
}

// Keys of values have the indices of their names for identifiers like others.
void MetaRules::CheckValueKey(Cursor& cursor, const MetaEntryView& entry) {
  if (!tables_.Check(cursor, "identifier", entry.offset, entry.identifier, language::CLASS_Value))
    return;
  // VALUE, and a "VALUE_" with nothing behind it, have the same name.
  if (entry.identifier == kPlainValue) {
    value_rules_.AddLocalValue(kPlainValue);
  } else {
    CheckTwice(cursor, entry);
  }
}

// The key of the schema that the entry is; null when it is another entry. Behind the first other
// entry there are no more keys.
const language::CompiledEntry* MetaRules::TakeKey(Cursor& cursor, const MetaEntryView& entry) {
  for (; next_key_ != keys_end_; ++next_key_) {
    if (next_key_->identifier == entry.identifier) return next_key_++;
    if (next_key_->is_required) ReportMissing(cursor, "identifier", entry.offset);
  }
  return nullptr;
}

void MetaRules::ReportMissing(Cursor& cursor, const char* field, std::size_t offset) {
  cursor.Report(field, offset, "there is no {} before it", next_key_->keyword);
}

// Whether the identifier is the index of a name that such a section can have entries of.
bool MetaRules::IsNamedEntry(Cursor& cursor, const MetaEntryView& entry) {
  const std::uint32_t base = language::ClassOf(entry.identifier);
  if (language::HoldsIndices(*kind_, base)) {
    return tables_.Check(cursor, "identifier", entry.offset, entry.identifier, base);
  }
  const language::EntryRow* fixed = language::FindCompiledEntryRow(entry.identifier);
  const language::ClassRow* named = language::FindClass(base);
  if (fixed == nullptr && named == nullptr) {
    cursor.Report("identifier", entry.offset, "there is no identifier 0x{:08X}", entry.identifier);
  } else {
    cursor.Report("identifier", entry.offset, "no {} can stand here in a {} section",
                  fixed != nullptr ? fixed->keyword : named->title, kind_->keyword);
  }
  return false;
}

void MetaRules::CheckTwice(Cursor& cursor, const MetaEntryView& entry) {
  const std::uint32_t base = language::ClassOf(entry.identifier);
  std::vector<std::uint32_t>& scopes = scopes_[base >> language::kClassShift];
  if (scopes.empty()) scopes.resize(tables_.CountOf(base));
  std::uint32_t& scope = scopes[language::OrdinalOf(entry.identifier)];
  if (std::exchange(scope, name_scope_) != name_scope_) return;
  cursor.Report("identifier", entry.offset, "an entry before it has the same name");
}

void MetaRules::OnSectionEnd(Cursor& cursor, MetaSectionView&) {
  if (!tables_.complete()) return;
  for (; next_key_ != keys_end_; ++next_key_) {
    if (next_key_->is_required) ReportMissing(cursor, "end", cursor.offset());
  }
  value_rules_.EndSection(cursor);
}

void MetaRules::OnEnd(Cursor& cursor) { references_.Check(cursor); }

}  // namespace rux::compiled
