// What a meta file must say, beyond its layout.
#ifndef RUXCOMP_VERIFY_META_RULES_H_
#define RUXCOMP_VERIFY_META_RULES_H_

#include <array>
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
#include "ruxcomp/verify/meta_references.h"
#include "ruxcomp/verify/meta_tables.h"
#include "ruxcomp/verify/value_rules.h"

namespace ruxcomp::verify {

// Reports what no compiler writes for a script that passed its checks: sections, identifiers,
// values and references that cannot be where they are. Once the tables are sound; without them,
// nothing is known of the words.
class MetaRules : public file::MetaVisitor {
 public:
  void OnTable(file::Cursor& cursor, file::MetaTableView table) {
    tables_.Take(cursor, std::move(table));
  }
  void OnSectionBegin(file::Cursor& cursor, const file::MetaSectionView& section);
  void OnEntry(file::Cursor& cursor, const file::MetaEntryView& entry);
  void OnSectionEnd(file::Cursor& cursor, const file::MetaSectionView& section);
  void OnEnd(file::Cursor& cursor) { references_.Check(cursor); }

  const MetaTables& tables() const { return tables_; }

 private:
  // VALUE: the value without a name of its own.
  static constexpr std::uint32_t kPlainValue = language::FixedIndex(language::CLASS_Value, "");

  static constexpr std::uint32_t BitOf(std::uint32_t section_identifier) {
    return std::uint32_t{1} << (section_identifier & language::kKindMask);
  }

  void CheckKind(file::Cursor& cursor, const file::MetaSectionView& section);
  const language::CompiledEntry* TakeKey(file::Cursor& cursor, std::uint32_t identifier,
                                         std::size_t offset);
  [[gnu::cold]] static void ReportMissing(file::Cursor& cursor, const char* field,
                                          std::size_t offset, const language::CompiledEntry& key) {
    cursor.Report(field, offset, "expected {} before it", key.keyword);
  }
  void CheckValueKey(file::Cursor& cursor, const file::MetaEntryView& entry);
  void CheckNamedEntry(file::Cursor& cursor, const file::MetaEntryView& entry);
  bool IsNamedEntry(file::Cursor& cursor, const file::MetaEntryView& entry) const;
  // Whether the identifier is in the table of that class; reports otherwise.
  bool IsIndex(file::Cursor& cursor, const file::MetaEntryView& entry, std::uint32_t base) const {
    const bool is_there = tables_.Has(entry.identifier(), base);
    if (!is_there) tables_.Report(cursor, "identifier", entry.offset, entry.identifier(), base);
    return is_there;
  }
  void CheckTwice(file::Cursor& cursor, const file::MetaEntryView& entry);

  MetaTables tables_;
  MetaReferences references_{tables_};
  ValueRules value_rules_{tables_, references_};

  std::uint32_t kinds_ = 0;  // a bit for each that there was
  // The section that one is in; its kind's first one where names are for all sections of a kind.
  const language::SectionKind* kind_ = nullptr;
  std::uint32_t identifier_ = 0;
  std::uint32_t name_scope_ = 0;                  // from 1
  language::Rows<language::CompiledEntry> keys_;  // of the kind
  const language::CompiledEntry* next_key_ = nullptr;
  const language::CompiledEntry* keys_end_ = nullptr;
  // By the top byte of the class and the ordinal: in which scope an entry had the name last.
  std::array<std::vector<std::uint32_t>, 256> scopes_;
};

inline void MetaRules::OnSectionBegin(file::Cursor& cursor, const file::MetaSectionView& section) {
  if (!tables_.complete()) return;
  const bool goes_on = section.identifier == identifier_;
  if (!goes_on) {
    kind_ = language::FindCompiledKind(section.identifier);
    keys_ = language::CompiledEntriesOf(*kind_);
  }
  if (!goes_on || kind_->uniqueness != language::Uniqueness::kKeys) {
    name_scope_ = static_cast<std::uint32_t>(section.ordinal) + 1;
  }
  CheckKind(cursor, section);
  next_key_ = keys_.begin();
  keys_end_ = keys_.end();
  value_rules_.BeginSection(section);
}

// The sections of a kind are neighbours.
inline void MetaRules::CheckKind(file::Cursor& cursor, const file::MetaSectionView& section) {
  const bool goes_on = std::exchange(identifier_, section.identifier) == section.identifier;
  const bool was_there = (kinds_ & BitOf(section.identifier)) != 0;
  kinds_ |= BitOf(section.identifier);
  if (was_there && kind_->uniqueness == language::Uniqueness::kSingle) {
    cursor.Report("identifier", section.offset, "there is an earlier {} section", kind_->keyword);
  } else if (was_there && !goes_on) {
    cursor.Report("identifier", section.offset,
                  "other {} sections come before those of another kind", kind_->keyword);
  }
}

inline void MetaRules::OnEntry(file::Cursor& cursor, const file::MetaEntryView& entry) {
  const language::CompiledEntry* const key = TakeKey(cursor, entry.identifier(), entry.offset);
  if (key == nullptr) return CheckNamedEntry(cursor, entry);
  if (key->content == language::Content::kTypedValue) CheckValueKey(cursor, entry);
  value_rules_.CheckEntry(cursor, entry, key->content);
}

// The key of the schema that the entry is; null when it is another entry. After the first other
// entry there are no more keys.
inline const language::CompiledEntry* MetaRules::TakeKey(file::Cursor& cursor,
                                                         std::uint32_t identifier,
                                                         std::size_t offset) {
  const language::CompiledEntry* key = next_key_;
  for (; key != keys_end_ && key->identifier != identifier; ++key) {
    if (key->is_required) ReportMissing(cursor, "identifier", offset, *key);
  }
  const bool is_there = key != keys_end_;
  next_key_ = is_there ? key + 1 : key;
  return is_there ? key : nullptr;
}

// Keys of values have the indices of their names for identifiers like others.
[[gnu::noinline]] inline void MetaRules::CheckValueKey(file::Cursor& cursor,
                                                       const file::MetaEntryView& entry) {
  if (!IsIndex(cursor, entry, language::CLASS_Value)) return;
  // VALUE, and a "VALUE_" with nothing after it, have the same name.
  if (entry.identifier() == kPlainValue) {
    value_rules_.AddLocalValue(kPlainValue);
  } else {
    CheckTwice(cursor, entry);
  }
}

[[gnu::noinline]] inline void MetaRules::CheckNamedEntry(file::Cursor& cursor,
                                                         const file::MetaEntryView& entry) {
  if (!tables_.complete() || !IsNamedEntry(cursor, entry)) return;
  CheckTwice(cursor, entry);
  const std::uint32_t base = language::ClassOf(entry.identifier());
  if (base == language::CLASS_Global) references_.Define(entry.identifier());
  value_rules_.AddLocalValue(entry.identifier());
  value_rules_.CheckEntry(cursor, entry, language::ContentOfNamed(base));
}

// Whether the identifier is the index of a name that such a section can have entries of.
inline bool MetaRules::IsNamedEntry(file::Cursor& cursor, const file::MetaEntryView& entry) const {
  const std::uint32_t base = language::ClassOf(entry.identifier());
  if (language::HoldsIndices(*kind_, base)) {
    return IsIndex(cursor, entry, base);
  }
  const language::EntryRow* fixed = language::FindCompiledEntryRow(entry.identifier());
  const language::ClassRow* named = language::FindClass(base);
  if (fixed == nullptr && named == nullptr) {
    cursor.Report("identifier", entry.offset, "no such identifier: 0x{:08X}", entry.identifier());
  } else {
    cursor.Report("identifier", entry.offset, "a {1} section cannot have {0} here",
                  fixed != nullptr ? fixed->keyword : named->title, kind_->keyword);
  }
  return false;
}

inline void MetaRules::CheckTwice(file::Cursor& cursor, const file::MetaEntryView& entry) {
  const std::uint32_t base = language::ClassOf(entry.identifier());
  std::vector<std::uint32_t>& scopes = scopes_[base >> language::kClassShift];
  if (scopes.empty()) scopes.resize(tables_.CountOf(base));
  std::uint32_t& scope = scopes[language::OrdinalOf(entry.identifier())];
  if (std::exchange(scope, name_scope_) != name_scope_) return;
  cursor.Report("identifier", entry.offset, "an earlier entry has the same name");
}

inline void MetaRules::OnSectionEnd(file::Cursor& cursor, const file::MetaSectionView&) {
  if (!tables_.complete()) return;
  for (; next_key_ != keys_end_; ++next_key_) {
    if (next_key_->is_required) ReportMissing(cursor, "end", cursor.offset(), *next_key_);
  }
  value_rules_.EndSection(cursor);
}

}  // namespace ruxcomp::verify

#endif  // RUXCOMP_VERIFY_META_RULES_H_
