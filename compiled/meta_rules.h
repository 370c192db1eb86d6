// What a meta file must say, beyond its layout.
#ifndef COMPILED_META_RULES_H_
#define COMPILED_META_RULES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "compiled/meta_references.h"
#include "compiled/meta_tables.h"
#include "compiled/value_rules.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/language/compiled_entries.h"

namespace rux::compiled {

// Reports what no compiler writes for a script that passed its checks: sections, identifiers,
// values and references that cannot stand where they do. Once the tables are sound; without them,
// nothing can be told of the words.
class MetaRules : public MetaVisitor {
 public:
  void OnTable(Cursor& cursor, MetaTableView table);
  void OnSectionBegin(Cursor& cursor, const MetaSectionView& section);
  void OnEntry(Cursor& cursor, MetaEntryView& entry);
  void OnSectionEnd(Cursor& cursor, MetaSectionView& section);
  void OnEnd(Cursor& cursor);

  // What there is in the file.
  std::size_t sections() const { return sections_; }
  std::size_t entries() const { return entries_; }
  std::size_t values() const { return values_; }
  const MetaTables& tables() const { return tables_; }

 private:
  void CheckKind(Cursor& cursor, const MetaSectionView& section);
  const language::CompiledEntry* TakeKey(Cursor& cursor, const MetaEntryView& entry);
  void ReportMissing(Cursor& cursor, const char* field, std::size_t offset);
  void CheckValueKey(Cursor& cursor, const MetaEntryView& entry);
  bool IsNamedEntry(Cursor& cursor, const MetaEntryView& entry);
  void CheckTwice(Cursor& cursor, const MetaEntryView& entry);

  MetaTables tables_;
  MetaReferences references_{tables_};
  ValueRules value_rules_{tables_, references_};

  std::uint32_t kinds_ = 0;  // a bit for each that there was
  // The section that one is in; its kind's first one where names are for all sections of a kind.
  const language::SectionKind* kind_ = nullptr;
  std::uint32_t identifier_ = 0;
  std::uint32_t name_scope_ = 0;                       // from 1
  const language::CompiledEntry* next_key_ = nullptr;  // of the kind
  const language::CompiledEntry* keys_end_ = nullptr;
  // By the top byte of the class and the ordinal: in which scope an entry had the name last.
  std::array<std::vector<std::uint32_t>, 256> scopes_;

  std::size_t sections_ = 0;
  std::size_t entries_ = 0;
  std::size_t values_ = 0;
};

}  // namespace rux::compiled

#endif  // COMPILED_META_RULES_H_
